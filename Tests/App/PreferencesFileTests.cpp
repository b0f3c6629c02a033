#include <csignal>
#include <memory>
#include <thread>
#include <tuple>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "App/AppPreferences.h"
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
        AppPreferences(store).setAutomaticCleanupEnabled(true);
        const PreferencesFile reread(file);
        EXPECT_EQ(reread.value("stintbook.capture.titleContext"), PreferenceValue(false)) << text;
        EXPECT_EQ(reread.value("stintbook.capture.other"), PreferenceValue(std::int64_t{1})) << text;
        EXPECT_EQ(reread.value("stintbook.capture.browserContext"), PreferenceValue(true)) << text;
        EXPECT_EQ(reread.value("stintbook.privacy.automaticCleanup"), PreferenceValue(true)) << text;
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

/// Files may not grow while it lives: what a full disk is to whoever writes them.
class FullDisk {
public:
    FullDisk()
        : m_formerHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_former);
        const rlimit none{0, m_former.rlim_max};
        setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_former);
        std::ignore = std::signal(SIGXFSZ, m_formerHandler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    void (*m_formerHandler)(int);
    rlimit m_former{};
};

TEST(PreferencesFile, OnAFullDiskLeavesTheFileAndWritesTheChangeWithTheNextOne)
{
    const TemporaryDirectory directory;
    const auto file = directory / "preferences.toml";
    const CapturedLog log;
    PreferencesFile store(file);
    AppPreferences preferences(store);
    EXPECT_TRUE(preferences.setAutomaticCleanupEnabled(true));
    const auto before = filesIn(directory.path());
    {
        const FullDisk disk;
        EXPECT_FALSE(preferences.setRetainsTitleContext(false));
        EXPECT_FALSE(preferences.setAutomaticCleanupEnabled(false));
    }
    EXPECT_EQ(log.errors().size(), 2U);
    EXPECT_FALSE(preferences.retainsTitleContext());
    EXPECT_EQ(store.value("stintbook.capture.titleContext"), PreferenceValue(false));
    EXPECT_EQ(filesIn(directory.path()), before);

    EXPECT_TRUE(preferences.setBrowserContextEnabled(true));
    const PreferencesFile reread(file);
    EXPECT_EQ(reread.value("stintbook.capture.titleContext"), PreferenceValue(false));
    EXPECT_EQ(reread.value("stintbook.privacy.automaticCleanup"), PreferenceValue(false));
    // No directory can be made there.
    PreferencesFile nowhere("/proc/velloran/preferences.toml");
    EXPECT_FALSE(AppPreferences(nowhere).setBrowserContextEnabled(true));
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
