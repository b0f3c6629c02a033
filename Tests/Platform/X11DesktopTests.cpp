#include <vector>

#include "DesktopTest.h"
#include "Platform/DesktopObservation.h"
#include "Platform/X11FrontmostApplication.h"
#include "Platform/X11Idle.h"
#include "Platform/X11ScreenSaver.h"

namespace stintbook {

namespace {

class X11DesktopTest : public DesktopTest {
protected:
    X11DesktopTest() { desktop.startDisplay(); }

    pid_t startTerminal(const std::string& title)
    {
        const auto process = desktop.start({"xterm", "-title", title, "-e", "cat"});
        desktop.activate(desktop.windowTitled(title));
        return process;
    }
};

} // namespace

TEST_F(X11DesktopTest, GoesOnWhenTheFrontWindowClosesAndWhenTheServerDies)
{
    startTerminal("First");
    const auto second = startTerminal("Second");
    ApplicationIdentities identities;
    X11FrontmostApplication provider(loop, clock, identities);
    std::vector<FrontmostWindow> reports;
    provider.follow([&](const FrontmostWindow& front) { reports.push_back(front); });
    const auto reportComes = [&](const std::string& title) {
        return comesTrue([&] { return !reports.empty() && reports.back().title == title; });
    };
    ASSERT_TRUE(reportComes("Second"));
    EXPECT_EQ(reports.back().application.processIdentifier, second);
    desktop.kill(second);
    ASSERT_TRUE(reportComes("First"));

    X11Idle idle(awakeClock);
    ASSERT_TRUE(idle.sample());
    EXPECT_NEAR(idle.sample()->awake.value, awakeClock.awake().value, 0.5);
    desktop.killDisplay();
    EXPECT_FALSE(comesTrue([&] { return reports.size() > 2; }, {0.3}));
    EXPECT_EQ(provider.current(), std::nullopt);
    EXPECT_FALSE(idle.sample());

    desktop.startDisplay();
    startTerminal("Third");
    EXPECT_TRUE(reportComes("Third"));
}

TEST_F(X11DesktopTest, NoticesABlankScreen)
{
    std::vector<bool> states;
    auto saver = X11ScreenSaver::follow(loop, [&](bool isOn) { states.push_back(isOn); });
    ASSERT_TRUE(saver);
    auto server = X11Connection::open();
    auto force = [&](int mode) {
        xcb_force_screen_saver(server->get(), static_cast<std::uint8_t>(mode));
        xcb_flush(server->get());
    };
    force(XCB_SCREEN_SAVER_ACTIVE);
    ASSERT_TRUE(comesTrue([&] { return states == std::vector{true}; }));
    force(XCB_SCREEN_SAVER_RESET);
    EXPECT_TRUE(comesTrue([&] { return states == std::vector{true, false}; }));
}

TEST_F(X11DesktopTest, IsChosenWhereThereIsADisplayAndNothingWhereThereIsNone)
{
    {
        DesktopObservation observation(loop, clock, awakeClock);
        EXPECT_TRUE(observation.canSeeApplications());
        EXPECT_EQ(observation.sources(),
                  (std::vector<std::string>{"frontmost: x11", "idle: xscreensaver", "boundaries: none"}));
    }
    desktop.unsetEnvironment("DISPLAY");
    DesktopObservation observation(loop, clock, awakeClock);
    EXPECT_FALSE(observation.canSeeApplications());
    EXPECT_FALSE(observation.idle().sample());
    EXPECT_EQ(observation.frontmost().current(), std::nullopt);
}

} // namespace stintbook
