#include <memory>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "App/AppPreferences.h"
#include "App/PreferencesFile.h"
#include "Support/CapturedLog.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {

TEST(PreferencesFile, ChangesOnlyTheLineThatIsMeant)
{
    const TemporaryDirectory directory;
    const auto file = directory / "preferences.toml";
    writeFile(file,
              "# Mine – keep\n"
              "[stintbook.capture] # what is recorded\n"
              "  titleContext = false   # not at work ☕\n"
              "\n"
              "[stintbook.export]\n"
              "other = \"größer\"\n"
              "defaultMode = \"detailed\" # until March");
    PreferencesFile store(file);
    AppPreferences preferences(store);
    preferences.setRetainsTitleContext(true);
    preferences.setBrowserContextEnabled(true);
    preferences.setRetentionWindow(*RetentionWindow::days(30));
    preferences.setDefaultExportMode(ExportMode::summarized);
    EXPECT_EQ(contentsOf(file),
              "# Mine – keep\n"
              "[stintbook.capture] # what is recorded\n"
              "  titleContext = true   # not at work ☕\n"
              "# Whether the web domain in front of a browser is recorded; it is not unless "
              "this is true.\n"
              "browserContext = true\n"
              "\n"
              "[stintbook.export]\n"
              "other = \"größer\"\n"
              "defaultMode = 'summarized' # until March\n"
              "\n"
              "[stintbook.privacy]\n"
              "# For how many days, today included, observed activity is kept.\n"
              "retentionDays = 30\n");
    preferences.setRetentionWindow(RetentionWindow::keepUntilDeleted());
    EXPECT_THAT(contentsOf(file), testing::EndsWith("# until March\n\n[stintbook.privacy]\n"));
}

TEST(PreferencesFile, KeepsTheMeaningOfATextWhoseLinesCannotBeChanged)
{
    for (const char* text : {"stintbook = { capture = { titleContext = false, other = 1 } }\n",
                             "stintbook.capture.titleContext = false\nstintbook.capture.other = 1\n",
                             "[stintbook]\ncapture.titleContext = false\ncapture.other = 1\n",
                             "\r\n[stintbook.capture]\r\ntitleContext = false\r\nother = 1\r\n"}) {
        const TemporaryDirectory directory;
        const auto file = directory / "preferences.toml";
        writeFile(file, text);
        PreferencesFile store(file);
        AppPreferences(store).setBrowserContextEnabled(true);
        AppPreferences(store).setLastAutomaticCleanup(Instant{1795261684.25});
        const PreferencesFile reread(file);
        EXPECT_EQ(reread.value("stintbook.capture.titleContext"), PreferenceValue(false)) << text;
        EXPECT_EQ(reread.value("stintbook.capture.other"), PreferenceValue(std::int64_t{1})) << text;
        EXPECT_EQ(reread.value("stintbook.capture.browserContext"), PreferenceValue(true)) << text;
        EXPECT_EQ(reread.value("stintbook.privacy.lastCleanup"), PreferenceValue(Instant{1795261684.25}))
            << text;
    }
}

TEST(PreferencesFile, SetsADamagedFileAsideAndGoesOnWithTheDefaults)
{
    const TemporaryDirectory directory;
    const auto file = directory / "preferences.toml";
    writeFile(file, "stintbook = [[[");
    const CapturedLog log;
    PreferencesFile preferences(file);
    EXPECT_TRUE(AppPreferences(preferences).retainsTitleContext());
    EXPECT_EQ(log.errors().size(), 1U);
    EXPECT_EQ(contentsOf(directory / "preferences.damaged.toml"), "stintbook = [[[");
    EXPECT_TRUE(preferences.store("stintbook.capture.titleContext", PreferenceValue(false)));
    EXPECT_FALSE(AppPreferences(preferences).retainsTitleContext());

    // Damaged anew while it is in use: the earlier copy stays, and so does what had been read.
    writeFile(file, "\xff\xfe");
    EXPECT_TRUE(preferences.store("stintbook.capture.browserContext", PreferenceValue(true)));
    EXPECT_EQ(contentsOf(directory / "preferences.damaged.toml"), "stintbook = [[[");
    EXPECT_EQ(contentsOf(directory / "preferences.damaged-2.toml"), "\xff\xfe");
    EXPECT_EQ(log.errors().size(), 2U);
    EXPECT_EQ(PreferencesFile(file).value("stintbook.capture.titleContext"), PreferenceValue(false));

    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    EXPECT_TRUE(AppPreferences(*std::make_unique<PreferencesFile>(file)).retainsTitleContext());
    EXPECT_TRUE(std::filesystem::is_directory(directory / "preferences.damaged-3.toml"));
}

TEST(PreferencesFile, KeepsAChangeThatCouldNotBeWrittenAndWritesItWithTheNextOne)
{
    const TemporaryDirectory directory;
    const auto folder = directory / "configuration";
    const CapturedLog log;
    PreferencesFile store(folder / "preferences.toml");
    AppPreferences preferences(store);
    EXPECT_TRUE(preferences.setAutomaticCleanupEnabled(true));
    // Nothing can be written where a file is in the folder's place.
    std::filesystem::rename(folder, directory / "aside");
    writeFile(folder, "in the way");
    EXPECT_FALSE(preferences.setRetainsTitleContext(false));
    EXPECT_FALSE(preferences.setAutomaticCleanupEnabled(false));
    EXPECT_EQ(log.errors().size(), 2U);
    EXPECT_EQ(store.value("stintbook.capture.titleContext"), PreferenceValue(false));

    std::filesystem::remove(folder);
    std::filesystem::rename(directory / "aside", folder);
    EXPECT_TRUE(preferences.setBrowserContextEnabled(true));
    const PreferencesFile reread(folder / "preferences.toml");
    EXPECT_EQ(reread.value("stintbook.capture.titleContext"), PreferenceValue(false));
    EXPECT_EQ(reread.value("stintbook.privacy.automaticCleanup"), PreferenceValue(false));
}

TEST(PreferencesFileConcurrency, LosesNoChangeOfTwoWriters)
{
    const TemporaryDirectory directory;
    const auto file = directory / "preferences.toml";
    constexpr int count = 40;
    const auto writeMany = [&](const std::string& table) {
        PreferencesFile preferences(file);
        for (int i = 0; i < count; ++i)
            EXPECT_TRUE(preferences.store(table + ".key" + std::to_string(i), PreferenceValue(true)));
    };
    {
        const std::jthread first(writeMany, "one");
        const std::jthread second(writeMany, "two.deeper");
    }
    const PreferencesFile preferences(file);
    for (int i = 0; i < count; ++i) {
        EXPECT_TRUE(preferences.value("one.key" + std::to_string(i)));
        EXPECT_TRUE(preferences.value("two.deeper.key" + std::to_string(i)));
    }
}

} // namespace stintbook
