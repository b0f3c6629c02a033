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
        m_desktop.startSessionBus();
        m_desktop.startCompositor();
    }

    /// It waits for the file "rename" to change its title.
    void startTerminal(const std::string& title)
    {
        auto file = (m_desktop.home() / "rename").string();
        auto script = "until [ -e " + file + R"( ]; do sleep 0.05; done; printf '\033]2;Renamed\007'; cat)";
        m_desktop.start({"foot", "--app-id", "foot", "--title", title, "sh", "-c", script});
    }
    bool reportComes(const std::string& title)
    {
        return comesTrue([&] { return !m_reports.empty() && m_reports.back().title == title; });
    }

    ApplicationIdentities m_identities;
    std::vector<FrontmostWindow> m_reports;
};

} // namespace

TEST_F(WaylandDesktopTest, FollowsSwitchesAndTitlesOfTheCompositorsWindows)
{
    DesktopObservation observation(m_loop, m_clock, m_awakeClock);
    EXPECT_EQ(observation.sources().at(0), "frontmost: wlroots");
    auto& provider = observation.frontmost();
    provider.follow([this](const FrontmostWindow& front) { m_reports.push_back(front); });
    EXPECT_EQ(provider.current(), std::nullopt);

    startTerminal("First");
    ASSERT_TRUE(reportComes("First"));
    EXPECT_EQ(m_reports.back().application.identity.bundleIdentifier, "foot");
    EXPECT_EQ(m_reports.back().application.processIdentifier, 0);
    startTerminal("Second");
    ASSERT_TRUE(reportComes("Second"));
    m_desktop.run({"swaymsg", "[title=First]", "focus"});
    ASSERT_TRUE(reportComes("First"));
    m_desktop.run({"swaymsg", "[title=First]", "kill"});
    ASSERT_TRUE(reportComes("Second"));
    std::ofstream(m_desktop.home() / "rename").flush();
    ASSERT_TRUE(reportComes("Renamed"));
    // One that comes later begins with the present state.
    WlrFrontmostApplication later(m_loop, m_clock, m_identities);
    EXPECT_EQ(later.current()->title, "Renamed");
}

TEST_F(WaylandDesktopTest, MeasuresTheTimeSinceTheLastInput)
{
    auto idle = WaylandIdle::find(m_loop, m_awakeClock, {0.3});
    ASSERT_TRUE(idle);
    EXPECT_TRUE(comesTrue([&] { return idle->sample().value().idle >= Seconds{0.5}; }));
    m_desktop.run({"swaymsg", "seat - cursor move 9 9"});
    EXPECT_TRUE(comesTrue([&] { return idle->sample().value().idle < Seconds{0.3}; }));
    EXPECT_TRUE(comesTrue([&] { return idle->sample().value().idle >= Seconds{0.5}; }));
    idle->noteSwitch();
    EXPECT_LT(idle->sample().value().idle, Seconds{0.3});
    EXPECT_TRUE(comesTrue([&] { return idle->sample().value().idle >= Seconds{0.5}; }));
}

} // namespace stintbook
