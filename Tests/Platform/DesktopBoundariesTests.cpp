#include <string>
#include <vector>

#include "Base/RawValue.h"
#include "DesktopTest.h"
#include "Platform/BusIdle.h"
#include "Platform/DesktopBoundaries.h"

namespace stintbook {

namespace {

class DesktopBoundariesTest : public DesktopTest {
protected:
    void follow()
    {
        m_boundaries.follow([this](const SystemBoundary& boundary) {
            if (const auto* suspended = std::get_if<ActivitySuspended>(&boundary))
                m_events.emplace_back(rawValue(suspended->reason));
            else
                m_events.emplace_back(rawValue(std::get<ActivityResumed>(boundary).cause));
        });
    }
    bool eventsAre(const std::vector<std::string>& expected)
    {
        comesTrue([&] { return m_events.size() >= expected.size(); });
        EXPECT_EQ(m_events, expected);
        return m_events == expected;
    }

    DesktopBoundaries m_boundaries{m_loop, m_clock};
    std::vector<std::string> m_events;
};

} // namespace

TEST_F(DesktopBoundariesTest, HoldsSleepBackUntilTheWorkIsDone)
{
    m_desktop.startLogind();
    std::function<void()> done;
    m_boundaries.setBeforeSleep([&](std::function<void()> whenDone) { done = std::move(whenDone); });
    follow();
    EXPECT_EQ(m_boundaries.name(), "logind");
    EXPECT_EQ(m_desktop.sleepInhibitorCount(), 1);
    m_desktop.announceSleep(true);
    ASSERT_TRUE(eventsAre({"systemSleep"}));
    EXPECT_EQ(m_desktop.sleepInhibitorCount(), 1);
    done();
    EXPECT_TRUE(PrivateDesktop::eventually([&] { return m_desktop.sleepInhibitorCount() == 0; }));
    m_desktop.announceSleep(false);
    ASSERT_TRUE(eventsAre({"systemSleep", "systemWake"}));
    // The next sleep is held back again.
    EXPECT_TRUE(PrivateDesktop::eventually([&] { return m_desktop.sleepInhibitorCount() == 1; }));
}

TEST_F(DesktopBoundariesTest, IsInactiveUntilTheLastOfLockSeatAndScreenSaverHasEnded)
{
    m_desktop.startLogind();
    m_desktop.startSessionBus();
    follow();
    auto screenSaver = [&](const char* state) {
        m_desktop.run({"gdbus", "emit", "--session", "--object-path", "/org/freedesktop/ScreenSaver",
                       "--signal", "org.freedesktop.ScreenSaver.ActiveChanged", state});
    };
    m_desktop.askToLock(true);
    ASSERT_TRUE(eventsAre({"sessionInactive"}));
    m_desktop.setSessionFlag("LockedHint", true);
    m_desktop.setSessionFlag("Active", false);
    screenSaver("true");
    // The two buses keep no order between them.
    EXPECT_FALSE(comesTrue([&] { return m_events.size() > 1; }, {0.1}));
    m_desktop.askToLock(false);
    m_desktop.setSessionFlag("Active", true);
    EXPECT_FALSE(comesTrue([&] { return m_events.size() > 1; }, {0.2}));
    screenSaver("false");
    ASSERT_TRUE(eventsAre({"sessionInactive", "sessionActive"}));
    m_desktop.setSessionFlag("LockedHint", false);
    m_desktop.setSessionFlag("Active", false);
    EXPECT_TRUE(eventsAre({"sessionInactive", "sessionActive", "sessionInactive"}));
}

TEST_F(DesktopBoundariesTest, StartsInactiveInALockedSession)
{
    m_desktop.startLogind();
    m_desktop.setSessionFlag("LockedHint", true);
    // As in a process that the session did not start.
    m_desktop.unsetEnvironment("XDG_SESSION_ID");
    follow();
    EXPECT_EQ(m_events, std::vector<std::string>{"sessionInactive"});
}

TEST_F(DesktopBoundariesTest, DoesWithoutLogindAndWithoutAnyBus)
{
    follow();
    EXPECT_EQ(m_boundaries.name(), "none");
    m_boundaries.stop();
    m_desktop.startSessionBus();
    // A system bus on which nobody is logind.
    m_desktop.setEnvironment("DBUS_SYSTEM_BUS_ADDRESS", std::getenv("DBUS_SESSION_BUS_ADDRESS"));
    follow();
    EXPECT_EQ(m_boundaries.name(), "none");
    EXPECT_TRUE(m_events.empty());
}

TEST_F(DesktopBoundariesTest, ReadsTheSessionsIdleHintAsTheLastResort)
{
    EXPECT_EQ(LogindIdle::find(m_clock, m_awakeClock), nullptr);
    m_desktop.startLogind();
    auto idle = LogindIdle::find(m_clock, m_awakeClock);
    ASSERT_TRUE(idle);
    EXPECT_EQ(idle->sample().value().idle, Seconds{0});
    m_desktop.setSessionFlag("IdleHint", true);
    // The mock's hint dates from the epoch.
    EXPECT_GT(idle->sample().value().idle, Seconds{1e9});
}

} // namespace stintbook
