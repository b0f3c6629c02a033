#include <gtest/gtest.h>

#include "App/AppPreferences.h"
#include "App/FileReplacement.h"
#include "App/PreferencesFile.h"
#include "Capture/CapturePause.h"
#include "Support/CapturedLog.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {

TEST(PreferencesFile, KeepsEveryTypeAndWhatItDoesNotKnow)
{
    const TemporaryDirectory directory;
    const auto file = directory / "preferences.toml";
    writeFile(file, "[another]\nprogram = 'keeps this'\n[stintbook.capture]\ntitleContext = false\n");
    {
        PreferencesFile preferences(file);
        EXPECT_FALSE(AppPreferences(preferences).retainsTitleContext());
        PreferencesCapturePauseStore(preferences).save(CapturePause{Instant{1795261684.25}, Seconds{900}});
        EXPECT_TRUE(AppPreferences(preferences).setBrowserContextEnabled(true));
    }
    PreferencesFile preferences(file);
    EXPECT_EQ(PreferencesCapturePauseStore(preferences).load(),
              (CapturePause{Instant{1795261684.25}, Seconds{900}}));
    EXPECT_TRUE(AppPreferences(preferences).browserContextEnabled());
    EXPECT_EQ(preferences.value("another.program"), PreferenceValue(std::string("keeps this")));
    PreferencesCapturePauseStore(preferences).save(std::nullopt);
    EXPECT_FALSE(PreferencesFile(file).value("stintbook.capture.pauseKind"));
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
}

TEST(FileReplacement, LeavesWhatWasThereWhenItCannotReplaceIt)
{
    const TemporaryDirectory directory;
    writeFile(directory / "bill.csv", "old");
    EXPECT_FALSE(replaceFile(directory / "missing" / "bill.csv", "new", 0600));
    std::filesystem::create_directory(directory / "folder");
    EXPECT_FALSE(replaceFile(directory / "folder", "new", 0600));
    EXPECT_EQ(contentsOf(directory / "bill.csv"), "old");
    EXPECT_EQ(filesIn(directory.path()).size(), 1U);

    std::filesystem::create_symlink(directory / "bill.csv", directory / "link.csv");
    EXPECT_TRUE(replaceFile(directory / "link.csv", "new", 0600));
    EXPECT_TRUE(std::filesystem::is_symlink(directory / "link.csv"));
    EXPECT_EQ(contentsOf(directory / "bill.csv"), "new");
}

TEST(FileReplacement, WritesToADeviceWithoutReplacingIt)
{
    EXPECT_FALSE(replaceFile("/dev/full", "new", 0600));
    EXPECT_TRUE(replaceFile("/dev/null", "new", 0600));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

} // namespace stintbook
