#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Platform/AutostartEntry.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {

namespace {

class AutostartEntryTest : public testing::Test {
protected:
    TemporaryDirectory directory;
    std::filesystem::path file = directory / "autostart" / "app.velloran.Velloran.desktop";
    AutostartEntry entry{directory / "autostart", "/usr/bin/velloran", {"--at-login"}};
};

} // namespace

TEST_F(AutostartEntryTest, IsMadeAndTakenAwayAgain)
{
    EXPECT_TRUE(entry.remove());
    EXPECT_TRUE(entry.add());
    EXPECT_TRUE(entry.isRegistered());
    EXPECT_EQ(contentsOf(file),
              "[Desktop Entry]\nType=Application\nName=Velloran\n"
              "Exec=\"/usr/bin/velloran\" \"--at-login\"\nIcon=app.velloran.Velloran\n"
              "X-GNOME-Autostart-enabled=true\n");
    EXPECT_TRUE(entry.add());
    EXPECT_TRUE(entry.remove());
    EXPECT_FALSE(std::filesystem::exists(file));

    AutostartEntry odd(directory / "autostart", "/opt/100% \"mine\"/velloran", {"$HOME"});
    EXPECT_TRUE(odd.add());
    EXPECT_THAT(contentsOf(file), testing::HasSubstr(R"(Exec="/opt/100%% \\"mine\\"/velloran" "\\$HOME")"));
}

TEST_F(AutostartEntryTest, HonoursWhatItsUserDidOnTheDesktop)
{
    std::filesystem::create_directory(file.parent_path());
    const std::string kept = "# mine\n[Desktop Entry]\nType=Application\nName[de]=Stundenbuch\n"
                             "Exec=/opt/old/velloran --quiet\nX-KDE-autostart-phase=2\n";
    const std::string action = "[Desktop Action new]\nHidden=false\n";
    for (const char* off : {"Hidden=true\n", "Hidden = true \n", "X-GNOME-Autostart-enabled=false\n"}) {
        writeFile(file, std::string(kept).append(off).append(action));
        EXPECT_FALSE(entry.isRegistered()) << off;
        EXPECT_TRUE(entry.add());
        EXPECT_TRUE(entry.isRegistered()) << contentsOf(file);
        EXPECT_THAT(contentsOf(file), testing::StartsWith(kept));
        EXPECT_THAT(contentsOf(file), testing::EndsWith(action));
    }
    writeFile(file, kept + action);
    EXPECT_TRUE(entry.isRegistered());
    EXPECT_TRUE(entry.remove());
    EXPECT_FALSE(entry.isRegistered());
    EXPECT_THAT(contentsOf(file), testing::HasSubstr("X-KDE-autostart-phase=2\n"));
}

TEST_F(AutostartEntryTest, LeavesAnEntryOfAnotherProgramAndSaysWhyItIsNotChanged)
{
    std::filesystem::create_directory(file.parent_path());
    const std::string foreign = "[Desktop Entry]\nType=Application\nExec=backup --all\n";
    writeFile(file, foreign);
    EXPECT_FALSE(entry.isRegistered());
    EXPECT_EQ(entry.add().error(), file.string() + " starts another program");
    EXPECT_TRUE(entry.remove());
    EXPECT_EQ(contentsOf(file), foreign);

    AutostartEntry nowhere("/proc/velloran/autostart", "/usr/bin/velloran", {});
    EXPECT_FALSE(nowhere.add());
}

} // namespace stintbook
