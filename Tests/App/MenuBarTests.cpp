#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "App/MenuBarIconNotice.h"
#include "App/MenuBarState.h"
#include "Base/VirtualTime.h"

namespace stintbook {

namespace {

struct Desktop final : MenuBarIconLocating, ReviewWindowSourcing {
    std::vector<MenuBarIconWindow> windows() const override
    {
        ++lookCount;
        return icons;
    }
    bool isOpen() const override { return isWindowOpen; }

    std::vector<MenuBarIconWindow> icons;
    bool isWindowOpen = true;
    mutable int lookCount = 0;
};

} // namespace

TEST(MenuBarState, SaysUntilWhenAPauseLastsInTheZoneAndFormOfItsReader)
{
    const auto berlin = *CalendarContext::inZone("Europe/Berlin");
    const auto afternoon = berlin.dayOn({2026, 11, 20})->start + Seconds{14 * 3600 + 30 * 60};
    const auto line = [&](const char* locale) {
        return menubar::statusLine({CaptureRuntimeState::paused(afternoon), CapturePermissionState::granted},
                                   berlin, locale);
    };
    EXPECT_EQ(line("de_DE"), "Paused until 14:30");
    EXPECT_THAT(line("en_US"), testing::MatchesRegex("Paused until 2:30.*PM"));
}

TEST(MenuBarIconNotice, IsShownWhileTheIconIsGoneForMoreThanAMoment)
{
    VirtualTime time(Instant{1'795'500'000});
    Desktop desktop;
    desktop.icons = {{.isDrawn = true}};
    MenuBarIconNotice notice({desktop, desktop, time, time});
    int tellings = 0;
    const auto listening = notice.follow([&] { ++tellings; });

    notice.evaluate();
    time.advance(Seconds{3600});
    EXPECT_EQ(desktop.lookCount, 1) << "an icon that is seen needs no watching";

    desktop.icons = {{.isDrawn = false}};
    notice.evaluate();
    time.advance(Seconds{9.5});
    notice.evaluate();
    EXPECT_FALSE(notice.isShown());
    time.advance(Seconds{0.5});
    notice.evaluate();
    EXPECT_TRUE(notice.isShown());

    desktop.icons = {{.isDrawn = true}};
    time.advance(Seconds{60});
    EXPECT_FALSE(notice.isShown());
    desktop.icons.clear();
    notice.evaluate();
    time.advance(Seconds{59});
    EXPECT_FALSE(notice.isShown());
    time.sleep(Seconds{1});
    EXPECT_TRUE(notice.isShown());

    desktop.isWindowOpen = false;
    notice.evaluate();
    EXPECT_FALSE(notice.isShown());
    const auto looks = desktop.lookCount;
    time.advance(Seconds{3600});
    EXPECT_EQ(desktop.lookCount, looks);
    EXPECT_EQ(tellings, 4);
}

} // namespace stintbook
