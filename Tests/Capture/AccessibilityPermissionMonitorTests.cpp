#include <gmock/gmock.h>

#include "Base/VirtualTime.h"
#include "Capture/AccessibilityPermissionMonitor.h"
#include "Support/CaptureProviders.h"

namespace stintbook {
namespace {

using testing::ElementsAre;
using enum CapturePermissionState;

TEST(AccessibilityPermissionMonitor, SaysTheFirstAnswerAndEachChange)
{
    VirtualTime time({0});
    InlineExecutor capture;
    const auto trust = std::make_shared<ScriptedTrust>();
    trust->trusted = false;
    AccessibilityPermissionMonitor monitor(
        {capture, time, {std::make_shared<SlowExecutor>(time, Seconds{0.5}), trust}, {2}});
    std::vector<CapturePermissionState> states;
    monitor.follow([&](CapturePermissionState state) { states.push_back(state); });
    time.advance({1});
    EXPECT_THAT(states, ElementsAre(notGranted));
    monitor.prompt();
    time.advance({5});
    EXPECT_THAT(states, ElementsAre(notGranted, awaitingUserAction));
    EXPECT_EQ(trust->promptCount, 1);
    trust->trusted = true;
    time.advance({10});
    trust->trusted = false;
    time.advance({10});
    EXPECT_THAT(states, ElementsAre(notGranted, awaitingUserAction, granted, revoked));
    monitor.stop();
    trust->trusted = true;
    time.advance({10});
    EXPECT_EQ(monitor.state(), revoked);
}

} // namespace
} // namespace stintbook
