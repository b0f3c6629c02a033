#include <fstream>
#include <vector>

#include "DesktopTest.h"
#include "Platform/DesktopObservation.h"
#include "Platform/WaylandIdle.h"
#include "Platform/WlrFrontmostApplication.h"

namespace stintbook {

namespace {

class WaylandDesktopTest : public DesktopTest {
protected:
    WaylandDesktopTest()
    {
        desktop.startSessionBus();
        desktop.startCompositor();
    }

    /// It waits for the file "rename" to change its title.
    void startTerminal(const std::string& title)
    {
        auto file = (desktop.home() / "rename").string();
        auto script = "until [ -e " + file + R"( ]; do sleep 0.05; done; printf '\033]2;Renamed\007'; cat)";
        desktop.start({"foot", "--app-id", "foot", "--title", title, "sh", "-c", script});
    }
    bool reportComes(const std::string& title)
    {
        return comesTrue([&] { return !reports.empty() && reports.back().title == title; });
    }

    ApplicationIdentities identities;
    std::vector<FrontmostWindow> reports;
};

} // namespace

TEST_F(WaylandDesktopTest, FollowsSwitchesAndTitlesOfTheCompositorsWindows)
{
    DesktopObservation observation(loop, clock, awakeClock);
    EXPECT_EQ(observation.sources().at(0), "frontmost: wlroots");
    auto& provider = observation.frontmost();
    provider.follow([this](const FrontmostWindow& front) { reports.push_back(front); });
    EXPECT_EQ(provider.current(), std::nullopt);

    startTerminal("First");
    ASSERT_TRUE(reportComes("First"));
    EXPECT_EQ(reports.back().application.identity.bundleIdentifier, "foot");
    EXPECT_EQ(reports.back().application.processIdentifier, 0);
    startTerminal("Second");
    ASSERT_TRUE(reportComes("Second"));
    desktop.run({"swaymsg", "[title=First]", "focus"});
    ASSERT_TRUE(reportComes("First"));
    desktop.run({"swaymsg", "[title=First]", "kill"});
    ASSERT_TRUE(reportComes("Second"));
    std::ofstream(desktop.home() / "rename").flush();
    ASSERT_TRUE(reportComes("Renamed"));
    // One that comes later begins with the present state.
    WlrFrontmostApplication later(loop, clock, identities);
    EXPECT_EQ(later.current()->title, "Renamed");
}

TEST_F(WaylandDesktopTest, MeasuresTheTimeSinceTheLastInput)
{
    auto idle = WaylandIdle::find(loop, awakeClock, {0.3});
    ASSERT_TRUE(idle);
    EXPECT_TRUE(comesTrue([&] { return idle->sample().value().idle >= Seconds{0.5}; }));
    desktop.run({"swaymsg", "seat - cursor move 9 9"});
    EXPECT_TRUE(comesTrue([&] { return idle->sample().value().idle < Seconds{0.3}; }));
    EXPECT_TRUE(comesTrue([&] { return idle->sample().value().idle >= Seconds{0.5}; }));
    idle->noteSwitch();
    EXPECT_LT(idle->sample().value().idle, Seconds{0.3});
    EXPECT_TRUE(comesTrue([&] { return idle->sample().value().idle >= Seconds{0.5}; }));
}

} // namespace stintbook
