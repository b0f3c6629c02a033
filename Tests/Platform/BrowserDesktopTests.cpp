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
        m_desktop.startDisplay();
        m_desktop.startSessionBus();
        m_desktop.startAccessibility();
        m_port =
            servePages(m_desktop, {{"guide", "The guide"}, {"inbox", "The inbox"}, {"secret", "The secret"}});
        m_provider.emplace(m_loop, m_clock, m_identities);
    }

    std::string address(const std::string& host, const std::string& page) const
    {
        return "http://" + host + ":" + std::to_string(m_port) + "/" + page;
    }
    /// The front window, once its title is that page's.
    FrontmostWindow front(const std::string& title)
    {
        std::optional<FrontmostWindow> window;
        EXPECT_TRUE(PrivateDesktop::eventually(
            [&] {
                window = m_provider->current();
                return window && window->title.starts_with(title);
            },
            {60}))
            << "in front is " << (window ? window->title : "nothing");
        return window.value_or(FrontmostWindow{});
    }
    /// The first successful reading of a window: a program that has just started joins late.
    std::string hostIn(const FrontmostWindow& window)
    {
        BrowserDomainReading reading;
        PrivateDesktop::eventually([&] {
            reading = m_reader.reading(window);
            return reading.kind == Kind::domain;
        });
        return reading.domain ? reading.domain->host() : std::string(rawValue(reading.kind));
    }

    int m_port = 0;
    ApplicationIdentities m_identities;
    std::optional<X11FrontmostApplication> m_provider;
    AccessibilityWindowReader m_reader;
};

} // namespace

TEST_F(BrowserDesktopTest, ReadsFirefoxTabByTabAndNothingOfAPrivateWindow)
{
    startFirefox(m_desktop, {address("docs.example.test", "guide")});
    auto guide = front("The guide");
    EXPECT_EQ(guide.application.identity.bundleIdentifier, "firefox-esr");
    EXPECT_EQ(hostIn(guide), "docs.example.test");
    EXPECT_EQ(m_reader.context(guide), FocusedContext::windowTitle(guide.title));

    startFirefox(m_desktop, {"--new-tab", address("mail.example.test", "inbox")});
    auto inbox = front("The inbox");
    // At once, as capture asks when the title changes.
    EXPECT_EQ(m_reader.reading(inbox).domain.value().host(), "mail.example.test");
    m_desktop.run({"xdotool", "key", "alt+1"});
    EXPECT_EQ(m_reader.reading(front("The guide")).domain.value().host(), "docs.example.test");

    startFirefox(m_desktop, {"--private-window", address("code.example.test", "secret")});
    auto secret = front("The secret");
    EXPECT_EQ(m_reader.reading(secret).kind, Kind::pageHasNoWebDomain);
    EXPECT_EQ(m_reader.context(secret), FocusedContext::none());
}

TEST_F(BrowserDesktopTest, WakesChromiumAndReadsItTabByTabAndNothingOfAnIncognitoWindow)
{
    startChromium(m_desktop, {address("docs.example.test", "guide")});
    auto guide = front("The guide");
    EXPECT_EQ(guide.application.identity.bundleIdentifier, "chromium");
    EXPECT_EQ(hostIn(guide), "docs.example.test");
    EXPECT_EQ(m_reader.context(guide), FocusedContext::windowTitle(guide.title));

    startChromium(m_desktop, {address("mail.example.test", "inbox")});
    EXPECT_EQ(m_reader.reading(front("The inbox")).domain.value().host(), "mail.example.test");
    m_desktop.run({"xdotool", "key", "alt+1"});
    EXPECT_EQ(m_reader.reading(front("The guide")).domain.value().host(), "docs.example.test");

    startChromium(m_desktop, {"--incognito", address("code.example.test", "secret")});
    auto secret = front("The secret");
    EXPECT_TRUE(PrivateDesktop::eventually(
        [&] { return m_reader.reading(secret).kind == Kind::pageHasNoWebDomain; }));
    EXPECT_EQ(m_reader.context(secret), FocusedContext::none());
}

} // namespace stintbook
