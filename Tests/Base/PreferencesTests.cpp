#include <gtest/gtest.h>

#include "Base/Preferences.h"

namespace stintbook {
namespace {

TEST(InMemoryPreferences, KeepsReplacesAndRemoves)
{
    InMemoryPreferences preferences;
    EXPECT_FALSE(preferences.value("days"));
    EXPECT_TRUE(preferences.store("days", PreferenceValue(std::int64_t{30})));
    EXPECT_TRUE(preferences.store("days", PreferenceValue(Instant{5})));
    EXPECT_EQ(preferences.value("days"), PreferenceValue(Instant{5}));
    EXPECT_TRUE(preferences.store("days", std::nullopt));
    EXPECT_TRUE(preferences.store("never there", std::nullopt));
    EXPECT_FALSE(preferences.value("days"));
}

} // namespace
} // namespace stintbook
