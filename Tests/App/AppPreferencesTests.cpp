#include <algorithm>
#include <latch>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "App/AppPreferences.h"
#include "App/DeferredPreferences.h"

namespace stintbook {

namespace {

auto everyChoice(const AppPreferences& preferences)
{
    return std::tuple(preferences.hasCompletedOnboarding(), preferences.retainsTitleContext(),
                      preferences.browserContextEnabled(), preferences.retentionWindow(),
                      preferences.automaticCleanupEnabled(), preferences.lastAutomaticCleanup(),
                      preferences.defaultExportMode(), preferences.exportFields(ExportMode::summarized),
                      preferences.exportFields(ExportMode::detailed));
}

const auto standardOfDetailed = ExportFieldSet::standard(ExportMode::detailed);

} // namespace

TEST(AppPreferences, TakeAValueOfTheWrongTypeForNone)
{
    InMemoryPreferences store;
    const std::tuple defaults(false, true, false, RetentionWindow::keepUntilDeleted(), false,
                              std::optional<Instant>(), ExportMode::summarized,
                              ExportFieldSet::standard(ExportMode::summarized), standardOfDetailed);
    EXPECT_EQ(everyChoice(AppPreferences(store)), defaults);

    store.store("stintbook.capture.titleContext", PreferenceValue(std::string("no")));
    store.store("stintbook.capture.browserContext", PreferenceValue(std::int64_t{1}));
    store.store("stintbook.export.defaultMode", PreferenceValue(std::string("Detailed")));
    store.store("stintbook.export.fields.detailed", PreferenceValue(std::string("date,colour")));
    store.store("stintbook.privacy.lastCleanup", PreferenceValue(std::string("yesterday")));
    for (const PreferenceValue& days : {PreferenceValue(std::int64_t{0}), PreferenceValue(std::int64_t{-5}),
                                        PreferenceValue(std::string("30")), PreferenceValue(30.0)}) {
        store.store("stintbook.privacy.retentionDays", days);
        EXPECT_EQ(everyChoice(AppPreferences(store)), defaults);
    }
}

TEST(DeferredPreferences, HoldAtOnceAndAreAllWrittenByTheEnd)
{
    struct Slow final : PreferenceStoring {
        std::optional<PreferenceValue> value(std::string_view key) const override { return kept.value(key); }
        bool store(std::string_view key, std::optional<PreferenceValue> value) override
        {
            gate.wait();
            return key != "refused" && kept.store(key, value);
        }
        InMemoryPreferences kept;
        std::latch gate{1};
    } slow;
    std::vector<bool> told;
    {
        DeferredPreferences preferences(slow);
        preferences.follow([&](bool isKept) { told.push_back(isKept); });
        slow.kept.store("removed", PreferenceValue(true));
        preferences.store("chosen", PreferenceValue(std::int64_t{1}));
        preferences.store("chosen", PreferenceValue(std::int64_t{2}));
        preferences.store("refused", PreferenceValue(true));
        preferences.store("removed", std::nullopt);
        EXPECT_EQ(preferences.value("chosen"), PreferenceValue(std::int64_t{2}));
        EXPECT_EQ(preferences.value("refused"), PreferenceValue(true));
        EXPECT_EQ(preferences.value("removed"), std::nullopt);
        slow.gate.count_down();
    }
    EXPECT_EQ(slow.kept.value("chosen"), PreferenceValue(std::int64_t{2}));
    EXPECT_EQ(slow.kept.value("removed"), std::nullopt);
    EXPECT_EQ(std::ranges::count(told, false), 1);
}

TEST(AppPreferences, AreWrittenAtOnce)
{
    InMemoryPreferences store;
    AppPreferences preferences(store);
    const ExportFieldSet columns{.includesClient = true, .includesDuration = true};
    preferences.setHasCompletedOnboarding(true);
    preferences.setRetainsTitleContext(false);
    preferences.setBrowserContextEnabled(true);
    preferences.setRetentionWindow(*RetentionWindow::days(30));
    preferences.setAutomaticCleanupEnabled(true);
    preferences.setLastAutomaticCleanup(Instant{1795261684.5});
    preferences.setDefaultExportMode(ExportMode::detailed);
    preferences.setExportFields(ExportMode::summarized, columns);
    EXPECT_EQ(everyChoice(AppPreferences(store)),
              std::tuple(true, false, true, *RetentionWindow::days(30), true,
                         std::optional(Instant{1795261684.5}), ExportMode::detailed, columns,
                         standardOfDetailed));

    preferences.setRetentionWindow(RetentionWindow::keepUntilDeleted());
    preferences.setLastAutomaticCleanup(std::nullopt);
    EXPECT_FALSE(store.value("stintbook.privacy.retentionDays"));
    EXPECT_FALSE(store.value("stintbook.privacy.lastCleanup"));
}

TEST(AppPreferences, TellTheirListenersWhichMayLeaveMeanwhile)
{
    InMemoryPreferences store;
    AppPreferences preferences(store);
    int firstCount = 0;
    int secondCount = 0;
    Listeners::Subscription second;
    auto first = preferences.follow([&] {
        EXPECT_FALSE(preferences.retainsTitleContext());
        ++firstCount;
        second = {};
    });
    second = preferences.follow([&] { ++secondCount; });
    preferences.setRetainsTitleContext(false);
    first = preferences.follow([&] { ++secondCount; });
    preferences.setAutomaticCleanupEnabled(true);
    EXPECT_EQ(firstCount, 1);
    EXPECT_EQ(secondCount, 1);
}

} // namespace stintbook
