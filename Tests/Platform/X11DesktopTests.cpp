#include <csignal>
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

    void follow()
    {
        provider.emplace(loop, clock, identities);
        provider->follow([this](const FrontmostWindow& front) { reports.push_back(front); });
    }
    /// Runs a command while the loop goes on.
    std::string startTerminal(const std::string& title)
    {
        processes.push_back(desktop.start({"xterm", "-title", title, "-e", "cat"}));
        auto window = desktop.windowTitled(title);
        desktop.activate(window);
        return window;
    }
    bool reportComes(const std::string& title)
    {
        return comesTrue([&] { return !reports.empty() && reports.back().title == title; });
    }

    ApplicationIdentities identities;
    std::optional<X11FrontmostApplication> provider;
    std::vector<FrontmostWindow> reports;
    std::vector<pid_t> processes;
};

} // namespace

TEST_F(X11DesktopTest, FollowsSwitchesAndTitlesWithTheApplicationAndItsProcess)
{
    auto first = startTerminal("First");
    follow();
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_EQ(reports[0].title, "First");
    EXPECT_EQ(reports[0].application.identity, (ApplicationIdentity{"debian-xterm", "XTerm"}));
    EXPECT_EQ(reports[0].application.processIdentifier, processes[0]);

    startTerminal("Second");
    ASSERT_TRUE(reportComes("Second"));
    EXPECT_EQ(reports.back().application.processIdentifier, processes[1]);

    auto before = clock.now();
    desktop.activate(first);
    auto after = clock.now();
    ASSERT_TRUE(reportComes("First"));
    // Between the two the loop did not run, so that the notification was seen at its next turn.
    EXPECT_GE(reports.back().application.observedAt, before);
    EXPECT_LE(reports.back().application.observedAt, after + Seconds{0.05});

    desktop.run({"xdotool", "set_window", "--name", "Größe — 東京", first});
    ASSERT_TRUE(reportComes("Größe — 東京"));
    auto reportsBefore = reports.size();
    provider->stop();
    desktop.run({"xdotool", "set_window", "--name", "Unseen", first});
    EXPECT_FALSE(comesTrue([&] { return reports.size() > reportsBefore; }, {0.3}));
    EXPECT_EQ(provider->current()->title, "Unseen");
}

TEST_F(X11DesktopTest, GoesOnWhenTheFrontWindowClosesAndWhenTheServerDies)
{
    startTerminal("First");
    startTerminal("Second");
    follow();
    desktop.kill(processes[1]);
    ASSERT_TRUE(reportComes("First"));

    desktop.killDisplay();
    EXPECT_FALSE(comesTrue([&] { return reports.size() > 2; }, {0.3}));
    EXPECT_EQ(provider->current(), std::nullopt);

    desktop.startDisplay();
    startTerminal("Third");
    EXPECT_TRUE(reportComes("Third"));
}

TEST_F(X11DesktopTest, MeasuresTheTimeSinceTheLastInput)
{
    X11Idle idle(awakeClock);
    desktop.run({"xdotool", "mousemove", "50", "50"});
    EXPECT_TRUE(PrivateDesktop::eventually([&] { return idle.sample().value().idle >= Seconds{0.5}; }));
    desktop.run({"xdotool", "mousemove", "60", "60"});
    auto state = idle.sample();
    ASSERT_TRUE(state);
    EXPECT_LT(state->idle, Seconds{0.5});
    EXPECT_NEAR(state->awake.value, awakeClock.awake().value, 0.5);

    desktop.killDisplay();
    EXPECT_FALSE(idle.sample());
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
