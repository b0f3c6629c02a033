#include <gtest/gtest.h>

#include "Capture/CapturePause.h"

namespace stintbook {
namespace {

TEST(CapturePause, EndsTomorrowAtTheNextDaysFirstInstant)
{
    const auto berlin = *CalendarContext::inZone("Europe/Berlin");
    const auto until = [&](Instant now) {
        return requestedPause(TimedPauseOption::untilTomorrow, now, berlin);
    };
    // 2026-11-20 23:59
    EXPECT_EQ(until({1795215540}).deadline, Instant{1795215600});
    EXPECT_EQ(until({1795215540}).length, Seconds{60});
    // 2026-03-29 00:00, a day of 23 hours
    EXPECT_EQ(until({1774738800}).length, Seconds{23 * 3600.0});
    EXPECT_EQ(requestedPause(TimedPauseOption::oneHour, {1000}, berlin).deadline, Instant{4600});
    EXPECT_EQ(requestedPause(TimedPauseOption::fifteenMinutes, {1000}, berlin).length, Seconds{900});
    EXPECT_FALSE(requestedPause(TimedPauseOption::untilIResume, {1000}, berlin).deadline);
}

TEST(PreferencesCapturePauseStore, KeepsEitherKindAndLoadsNoneFromWhatIsNone)
{
    InMemoryPreferences preferences;
    PreferencesCapturePauseStore store(preferences);
    const CapturePause timed{Instant{1795215600.25}, {900}};
    store.save(timed);
    EXPECT_EQ(store.load(), timed);
    store.save(CapturePause{});
    EXPECT_EQ(store.load(), CapturePause{});
    store.save(std::nullopt);
    EXPECT_FALSE(store.load());
    EXPECT_FALSE(preferences.value(store.kindKey));

    preferences.store(store.kindKey, "timed");
    preferences.store(store.lengthKey, 900.0);
    EXPECT_FALSE(store.load());
    preferences.store(store.deadlineKey, "tomorrow");
    EXPECT_FALSE(store.load());
    preferences.store(store.deadlineKey, Instant{5});
    EXPECT_TRUE(store.load());
    preferences.store(store.kindKey, "whenever");
    EXPECT_FALSE(store.load());
}

} // namespace
} // namespace stintbook
