#include <gtest/gtest.h>

#include "App/AppPreferences.h"

namespace stintbook {

TEST(AppPreferences, OfAFreshInstallationRecordTitlesAloneAndKeepEverything)
{
    InMemoryPreferences store;
    const AppPreferences preferences(store);
    EXPECT_FALSE(preferences.hasCompletedOnboarding());
    EXPECT_TRUE(preferences.retainsTitleContext());
    EXPECT_FALSE(preferences.browserContextEnabled());
    EXPECT_EQ(preferences.retentionWindow(), RetentionWindow::keepUntilDeleted());
    EXPECT_FALSE(preferences.automaticCleanupEnabled());
    EXPECT_FALSE(preferences.lastAutomaticCleanup());
    EXPECT_EQ(preferences.defaultExportMode(), ExportMode::summarized);
    EXPECT_FALSE(preferences.rememberedExportFields(ExportMode::summarized));
    EXPECT_EQ(preferences.exportFields(ExportMode::detailed), ExportFieldSet::standard(ExportMode::detailed));
}

TEST(AppPreferences, ReadsAValueOfTheWrongTypeAsItsDefault)
{
    InMemoryPreferences store;
    store.store("stintbook.capture.titleContext", PreferenceValue(std::string("no")));
    store.store("stintbook.capture.browserContext", PreferenceValue(std::int64_t{1}));
    store.store("stintbook.export.defaultMode", PreferenceValue(std::string("Detailed")));
    store.store("stintbook.export.fields.detailed", PreferenceValue(std::string("date,colour")));
    store.store("stintbook.privacy.lastCleanup", PreferenceValue(std::string("yesterday")));
    for (const PreferenceValue& days : {PreferenceValue(std::int64_t{0}), PreferenceValue(std::int64_t{-5}),
                                        PreferenceValue(std::string("30")), PreferenceValue(30.0)}) {
        store.store("stintbook.privacy.retentionDays", days);
        EXPECT_EQ(AppPreferences(store).retentionWindow(), RetentionWindow::keepUntilDeleted());
    }
    const AppPreferences preferences(store);
    EXPECT_TRUE(preferences.retainsTitleContext());
    EXPECT_FALSE(preferences.browserContextEnabled());
    EXPECT_EQ(preferences.defaultExportMode(), ExportMode::summarized);
    EXPECT_EQ(preferences.exportFields(ExportMode::detailed), ExportFieldSet::standard(ExportMode::detailed));
    EXPECT_FALSE(preferences.lastAutomaticCleanup());
}

TEST(AppPreferences, WriteEachChangeAtOnceAndReadItBack)
{
    InMemoryPreferences store;
    AppPreferences preferences(store);
    const auto columns = ExportFieldSet{.includesClient = true, .includesDuration = true};
    EXPECT_TRUE(preferences.setHasCompletedOnboarding(true));
    EXPECT_TRUE(preferences.setRetainsTitleContext(false));
    EXPECT_TRUE(preferences.setBrowserContextEnabled(true));
    EXPECT_TRUE(preferences.setRetentionWindow(*RetentionWindow::days(30)));
    EXPECT_TRUE(preferences.setAutomaticCleanupEnabled(true));
    EXPECT_TRUE(preferences.setLastAutomaticCleanup(Instant{1795261684.5}));
    EXPECT_TRUE(preferences.setDefaultExportMode(ExportMode::detailed));
    EXPECT_TRUE(preferences.setExportFields(ExportMode::summarized, columns));

    EXPECT_EQ(store.value("stintbook.privacy.retentionDays"), PreferenceValue(std::int64_t{30}));
    EXPECT_EQ(store.value("stintbook.export.fields.summary"),
              PreferenceValue(std::string("client,duration")));
    const AppPreferences reread(store);
    EXPECT_TRUE(reread.hasCompletedOnboarding());
    EXPECT_FALSE(reread.retainsTitleContext());
    EXPECT_TRUE(reread.browserContextEnabled());
    EXPECT_EQ(reread.retentionWindow().dayCount(), 30);
    EXPECT_TRUE(reread.automaticCleanupEnabled());
    EXPECT_EQ(reread.lastAutomaticCleanup(), Instant{1795261684.5});
    EXPECT_EQ(reread.defaultExportMode(), ExportMode::detailed);
    EXPECT_EQ(reread.exportFields(ExportMode::summarized), columns);
    EXPECT_FALSE(reread.rememberedExportFields(ExportMode::detailed));

    EXPECT_TRUE(preferences.setRetentionWindow(RetentionWindow::keepUntilDeleted()));
    EXPECT_TRUE(preferences.setLastAutomaticCleanup(std::nullopt));
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
        EXPECT_TRUE(store.value("stintbook.capture.titleContext"));
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
