#include <csignal>
#include <vector>

#include "DesktopTest.h"
#include "Platform/AccessibilityFrontmostApplication.h"
#include "Platform/AccessibilityTrust.h"
#include "Platform/AccessibilityWindowReader.h"
#include "Platform/X11FrontmostApplication.h"

namespace stintbook {

namespace {

using Kind = BrowserDomainReading::Kind;

/// An editor stands for a browser: it takes part in accessibility and starts fast.
class AccessibilityDesktopTest : public DesktopTest {
protected:
    AccessibilityDesktopTest()
    {
        desktop.startDisplay();
        desktop.startSessionBus();
    }

    pid_t startEditor(const std::string& file)
    {
        auto path = desktop.home() / file;
        desktop.run({"touch", path});
        auto process = desktop.start({"mousepad", "--disable-server", path});
        desktop.activate(desktop.windowTitled(file));
        return process;
    }
    /// The front window, taken for a browser's.
    FrontmostWindow asBrowser()
    {
        X11FrontmostApplication provider(loop, clock, identities);
        std::optional<FrontmostWindow> front;
        // Under load the window manager may still be about to say it.
        PrivateDesktop::eventually([&] { return (front = provider.current()).has_value(); });
        auto window = front.value();
        window.application.identity.bundleIdentifier = "firefox";
        return window;
    }

    ApplicationIdentities identities;
    AccessibilityWindowReader reader;
    SystemAccessibilityTrust trust;
};

} // namespace

TEST_F(AccessibilityDesktopTest, TellsWhetherAccessibilityIsOnAndSwitchesItOnWhenAskedTo)
{
    EXPECT_FALSE(trust.isTrusted(TrustPrompt::none));
    EXPECT_EQ(reader.reading({{{"firefox", "Firefox"}, 1, {}}, "Title"}).kind, Kind::notDetermined);
    EXPECT_TRUE(trust.isTrusted(TrustPrompt::shown));
    EXPECT_TRUE(trust.isTrusted(TrustPrompt::none));
    desktop.unsetEnvironment("DBUS_SESSION_BUS_ADDRESS");
    EXPECT_FALSE(SystemAccessibilityTrust().isTrusted(TrustPrompt::shown));
    EXPECT_EQ(AccessibilityWindowReader().reading({{{"firefox", "Firefox"}, 1, {}}, "Title"}).kind,
              Kind::notAuthorized);
}

TEST_F(AccessibilityDesktopTest, SaysWhyAnAddressCannotBeReadAndNeverWaitsLongerThanASecond)
{
    desktop.startAccessibility();
    auto editor = startEditor("notes.txt");
    auto window = asBrowser();
    // It takes part, but has no page.
    EXPECT_TRUE(
        PrivateDesktop::eventually([&] { return reader.reading(window).kind == Kind::pageHasNoWebDomain; }));
    EXPECT_EQ(reader.context(window), FocusedContext::windowTitle(window.title));
    auto renamed = window;
    renamed.title = "Something else";
    EXPECT_EQ(reader.reading(renamed).kind, Kind::noFrontmostWindow);
    EXPECT_EQ(reader.context(renamed), FocusedContext::none());
    auto unmarked = window;
    unmarked.application.identity.bundleIdentifier = "org.xfce.mousepad";
    EXPECT_EQ(reader.reading(unmarked).kind, Kind::unsupportedBrowser);
    EXPECT_EQ(reader.context(unmarked), FocusedContext::windowTitle(window.title));
    auto gone = window;
    gone.application.processIdentifier = 1 << 30;
    EXPECT_EQ(reader.reading(gone).kind, Kind::browserNotRunning);
    auto silent = window;
    silent.application.processIdentifier = getpid();
    EXPECT_EQ(reader.reading(silent), (BrowserDomainReading{Kind::failed, {}, -1708}));

    kill(editor, SIGSTOP);
    auto start = awakeClock.awake();
    EXPECT_EQ(reader.reading(window), (BrowserDomainReading{Kind::failed, {}, -ETIMEDOUT}));
    EXPECT_EQ(reader.context(window), FocusedContext::none());
    EXPECT_LT(awakeClock.awake() - start, Seconds{1});
    kill(editor, SIGCONT);
    EXPECT_TRUE(
        PrivateDesktop::eventually([&] { return reader.reading(window).kind == Kind::pageHasNoWebDomain; }));
}

TEST_F(AccessibilityDesktopTest, IsALimitedSourceOfWhatIsInFront)
{
    desktop.startAccessibility();
    startEditor("first.txt");
    AccessibilityFrontmostApplication provider(loop, clock, identities);
    std::vector<FrontmostWindow> reports;
    provider.follow([&](const FrontmostWindow& front) { reports.push_back(front); });
    auto reportComes = [&](const std::string& file) {
        return comesTrue([&] { return !reports.empty() && reports.back().title.contains(file); });
    };
    ASSERT_TRUE(reportComes("first.txt"));
    EXPECT_EQ(reports.back().application.identity.bundleIdentifier, "org.xfce.mousepad");
    auto second = startEditor("second.txt");
    ASSERT_TRUE(reportComes("second.txt"));
    EXPECT_EQ(reports.back().application.processIdentifier, second);
    desktop.activate(desktop.windowTitled("first.txt"));
    ASSERT_TRUE(reportComes("first.txt"));
    provider.stop();
}

} // namespace stintbook
