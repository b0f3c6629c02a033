#include <string>

#include "DesktopTest.h"
#include "Platform/AccessibilityTrust.h"
#include "Platform/AccessibilityWindowReader.h"
#include "Platform/X11FrontmostApplication.h"
#include "Support/DesktopBrowsers.h"

namespace stintbook {

namespace {

using Kind = BrowserDomainReading::Kind;

/// Real browsers, read as capture reads them.
class BrowserDesktopTest : public DesktopTest {
protected:
    BrowserDesktopTest()
    {
        desktop.startDisplay();
        desktop.startSessionBus();
        desktop.startAccessibility();
        port =
            servePages(desktop, {{"guide", "The guide"}, {"inbox", "The inbox"}, {"secret", "The secret"}});
        provider.emplace(loop, clock, identities);
    }

    std::string address(const std::string& host, const std::string& page) const
    {
        return "http://" + host + ":" + std::to_string(port) + "/" + page;
    }
    /// The front window, once its title is that page's.
    FrontmostWindow front(const std::string& title)
    {
        std::optional<FrontmostWindow> window;
        EXPECT_TRUE(PrivateDesktop::eventually(
            [&] {
                window = provider->current();
                return window && window->title.starts_with(title);
            },
            {60}))
            << "in front is " << (window ? window->title : "nothing");
        return window.value_or(FrontmostWindow{});
    }
    /// Reads again only while the program is too busy to answer: on a machine at work that is no fault.
    BrowserDomainReading read(const FrontmostWindow& window)
    {
        BrowserDomainReading reading;
        PrivateDesktop::eventually([&] {
            reading = reader.reading(window);
            return reading.kind != Kind::failed;
        });
        return reading;
    }
    std::string hostIn(const FrontmostWindow& window)
    {
        auto reading = read(window);
        return reading.domain ? reading.domain->host() : std::string(rawValue(reading.kind));
    }
    /// A program that has just started joins late.
    bool comesToShow(const FrontmostWindow& window, const std::string& host)
    {
        return PrivateDesktop::eventually([&] {
            return hostIn(window) == host
                && reader.context(window) == FocusedContext::windowTitle(window.title);
        });
    }

    int port = 0;
    ApplicationIdentities identities;
    std::optional<X11FrontmostApplication> provider;
    AccessibilityWindowReader reader;
};

} // namespace

TEST_F(BrowserDesktopTest, ReadsFirefoxTabByTabAndNothingOfAPrivateWindow)
{
    startFirefox(desktop, {address("docs.example.test", "guide")});
    auto guide = front("The guide");
    EXPECT_EQ(guide.application.identity.bundleIdentifier, "firefox-esr");
    EXPECT_TRUE(comesToShow(guide, "docs.example.test"));

    startFirefox(desktop, {"--new-tab", address("mail.example.test", "inbox")});
    // At once, as capture asks when the title changes.
    EXPECT_EQ(hostIn(front("The inbox")), "mail.example.test");
    desktop.run({"xdotool", "key", "alt+1"});
    EXPECT_EQ(hostIn(front("The guide")), "docs.example.test");

    startFirefox(desktop, {"--private-window", address("code.example.test", "secret")});
    auto secret = front("The secret");
    EXPECT_EQ(read(secret).kind, Kind::pageHasNoWebDomain);
    EXPECT_EQ(reader.context(secret), FocusedContext::none());
}

TEST_F(BrowserDesktopTest, WakesChromiumAndReadsItTabByTabAndNothingOfAnIncognitoWindow)
{
    startChromium(desktop, {address("docs.example.test", "guide")});
    auto guide = front("The guide");
    EXPECT_EQ(guide.application.identity.bundleIdentifier, "chromium");
    EXPECT_TRUE(comesToShow(guide, "docs.example.test"));

    startChromium(desktop, {address("mail.example.test", "inbox")});
    EXPECT_EQ(hostIn(front("The inbox")), "mail.example.test");
    desktop.run({"xdotool", "key", "alt+1"});
    EXPECT_EQ(hostIn(front("The guide")), "docs.example.test");

    startChromium(desktop, {"--incognito", address("code.example.test", "secret")});
    auto secret = front("The secret");
    EXPECT_EQ(read(secret).kind, Kind::pageHasNoWebDomain);
    EXPECT_EQ(reader.context(secret), FocusedContext::none());
}

} // namespace stintbook
