#include "DesktopTest.h"
#include "Platform/WaylandIdle.h"

namespace stintbook {

using WaylandDesktopTest = DesktopTest;

TEST_F(WaylandDesktopTest, MeasuresTheTimeSinceTheLastInput)
{
    desktop.startSessionBus();
    desktop.startCompositor();
    const auto idle = WaylandIdle::find(loop, awakeClock, {0.3});
    ASSERT_TRUE(idle);
    const auto comesToRest = [&] {
        return comesTrue([&] { return idle->sample().value().idle >= Seconds{0.5}; });
    };
    EXPECT_TRUE(comesToRest());
    desktop.run({"swaymsg", "seat - cursor move 9 9"});
    EXPECT_TRUE(comesTrue([&] { return idle->sample().value().idle < Seconds{0.3}; }));
    EXPECT_TRUE(comesToRest());
    idle->noteSwitch();
    EXPECT_LT(idle->sample().value().idle, Seconds{0.3});
    EXPECT_TRUE(comesToRest());
}

} // namespace stintbook
