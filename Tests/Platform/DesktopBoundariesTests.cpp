#include <string>
#include <vector>

#include "Base/RawValue.h"
#include "Base/VirtualTime.h"
#include "DesktopTest.h"
#include "Platform/BusIdle.h"
#include "Platform/DesktopBoundaries.h"

namespace stintbook {

namespace {

class DesktopBoundariesTest : public DesktopTest {
protected:
    void follow()
    {
        boundaries = std::make_unique<DesktopBoundaries>(loop, clock);
        boundaries->setBeforeSleep(beforeSleep);
        boundaries->follow([this](const SystemBoundary& boundary) {
            if (const auto* suspended = std::get_if<ActivitySuspended>(&boundary))
                events.emplace_back(rawValue(suspended->reason));
            else
                events.emplace_back(rawValue(std::get<ActivityResumed>(boundary).cause));
        });
    }
    bool eventsAre(const std::vector<std::string>& expected)
    {
        comesTrue([&] { return events.size() >= expected.size(); });
        EXPECT_EQ(events, expected);
        return events == expected;
    }

    DesktopBoundaries::BeforeSleep beforeSleep;
    std::unique_ptr<DesktopBoundaries> boundaries;
    std::vector<std::string> events;
};

} // namespace

TEST_F(DesktopBoundariesTest, HoldsSleepBackUntilTheWorkIsDone)
{
    desktop.startLogind();
    std::function<void()> done;
    beforeSleep = [&](std::function<void()> whenDone) { done = std::move(whenDone); };
    follow();
    EXPECT_EQ(boundaries->name(), "logind");
    desktop.announceSleep(true);
    ASSERT_TRUE(eventsAre({"systemSleep"}));
    EXPECT_EQ(desktop.sleepInhibitorCount(), 1);
    done();
    EXPECT_TRUE(PrivateDesktop::eventually([&] { return desktop.sleepInhibitorCount() == 0; }));
    desktop.announceSleep(false);
    ASSERT_TRUE(eventsAre({"systemSleep", "systemWake"}));
    // The next sleep is held back again.
    EXPECT_TRUE(PrivateDesktop::eventually([&] { return desktop.sleepInhibitorCount() == 1; }));
}

TEST_F(DesktopBoundariesTest, IsInactiveUntilTheLastOfLockSeatAndScreenSaverHasEnded)
{
    desktop.startLogind();
    desktop.startSessionBus();
    follow();
    auto screenSaver = [&](const char* state) {
        desktop.run({"gdbus", "emit", "--session", "--object-path", "/org/freedesktop/ScreenSaver",
                     "--signal", "org.freedesktop.ScreenSaver.ActiveChanged", state});
    };
    desktop.askToLock(true);
    ASSERT_TRUE(eventsAre({"sessionInactive"}));
    desktop.setSessionFlag("LockedHint", true);
    desktop.setSessionFlag("Active", false);
    screenSaver("true");
    // The two buses keep no order between them.
    EXPECT_FALSE(comesTrue([&] { return events.size() > 1; }, {0.1}));
    desktop.askToLock(false);
    desktop.setSessionFlag("Active", true);
    EXPECT_FALSE(comesTrue([&] { return events.size() > 1; }, {0.2}));
    screenSaver("false");
    ASSERT_TRUE(eventsAre({"sessionInactive", "sessionActive"}));
    desktop.setSessionFlag("LockedHint", false);
    desktop.setSessionFlag("Active", false);
    EXPECT_TRUE(eventsAre({"sessionInactive", "sessionActive", "sessionInactive"}));
}

TEST_F(DesktopBoundariesTest, EndsALockThatNobodyConfirmedOnceItsUserSwitchesApplicationsAgain)
{
    desktop.startLogind();
    VirtualTime time({1000});
    DesktopBoundaries boundaries(loop, time);
    int resumptions = 0;
    boundaries.follow([&](const SystemBoundary& boundary) {
        resumptions += std::holds_alternative<ActivityResumed>(boundary);
    });
    auto lockAndSwitchAfter = [&](Seconds length) {
        desktop.askToLock(true);
        EXPECT_FALSE(comesTrue([&] { return resumptions > 0; }, {0.2}));
        time.advance(length);
        boundaries.noteSwitch();
    };
    lockAndSwitchAfter({30});
    EXPECT_EQ(resumptions, 0);
    lockAndSwitchAfter({61});
    EXPECT_EQ(resumptions, 1);

    resumptions = 0;
    desktop.setSessionFlag("LockedHint", true);
    lockAndSwitchAfter({3600});
    EXPECT_EQ(resumptions, 0);
}

TEST_F(DesktopBoundariesTest, StartsInactiveInALockedSessionWhoseIdleHintIsTheLastResort)
{
    EXPECT_EQ(LogindIdle::find(clock, awakeClock), nullptr);
    desktop.startLogind();
    desktop.setSessionFlag("LockedHint", true);
    // As in a process that the session did not start.
    desktop.unsetEnvironment("XDG_SESSION_ID");
    follow();
    EXPECT_EQ(events, std::vector<std::string>{"sessionInactive"});

    auto idle = LogindIdle::find(clock, awakeClock);
    ASSERT_TRUE(idle);
    EXPECT_EQ(idle->sample().value().idle, Seconds{0});
    desktop.setSessionFlag("IdleHint", true);
    // The mock's hint dates from the epoch.
    EXPECT_GT(idle->sample().value().idle, Seconds{1e9});
}

TEST_F(DesktopBoundariesTest, DoesWithoutLogindAndWithoutAnyBus)
{
    follow();
    EXPECT_EQ(boundaries->name(), "none");
    desktop.startSessionBus();
    // A system bus on which nobody is logind.
    desktop.setEnvironment("DBUS_SYSTEM_BUS_ADDRESS", std::getenv("DBUS_SESSION_BUS_ADDRESS"));
    follow();
    EXPECT_EQ(boundaries->name(), "none");
}

} // namespace stintbook
