#include <cstdlib>
#include <fstream>

#include <gtest/gtest.h>
#include <unistd.h>

#include "Platform/ApplicationIdentities.h"

namespace stintbook {

namespace fs = std::filesystem;

namespace {

class ApplicationIdentitiesTest : public testing::Test {
public:
    ~ApplicationIdentitiesTest() override { fs::remove_all(root); }

protected:
    ApplicationIdentitiesTest()
    {
        auto pattern = (fs::temp_directory_path() / "velloran-entries-XXXXXX").string();
        root = mkdtemp(pattern.data());
        places.dataDirectories = {root / "user", root / "system"};
        places.locale = "de_AT.UTF-8";
        places.processes = root / "proc";
    }

    void addEntry(const std::string& place, const std::string& file, const std::string& lines)
    {
        auto path = root / place / "applications" / file;
        fs::create_directories(path.parent_path());
        std::ofstream(path) << "# A comment\n[Desktop Entry]\nType=Application\n"
                            << lines << "\n[Desktop Action new]\nName=Not this\nExec=other\n";
    }
    void addProcess(int number, const std::string& executable)
    {
        auto directory = root / "proc" / std::to_string(number);
        fs::create_directories(directory);
        fs::create_symlink(executable, directory / "exe");
    }
    std::string idOf(const WindowHints& hints) { return identities.value().identify(hints).bundleIdentifier; }
    void read() { identities.emplace(places); }

    fs::path root;
    ApplicationIdentities::Places places;
    std::optional<ApplicationIdentities> identities;
};

} // namespace

TEST_F(ApplicationIdentitiesTest, PrefersTheApplicationIdThenTheDeclaredClassThenTheEntrysNameThenTheProgram)
{
    addEntry("system", "org.example.Editor.desktop", "Name=Editor\nExec=editor %U\nStartupWMClass=Other");
    addEntry("system", "browser-esr.desktop",
             "Name=Browser\nStartupWMClass=Browser-ESR\nExec=/usr/lib/browser/browser");
    addEntry("system", "notes.desktop", "Name=Notes\nExec=env LANG=C \"/opt/notes/notes-bin\" --new");
    addEntry("system", "debian-term.desktop", "Name=Term\nExec=term");
    addEntry("system", "python.desktop", "Name=Python\nExec=python3\nTerminal=true");
    addProcess(7, "/usr/bin/term");
    addProcess(8, "/opt/notes/notes-bin (deleted)");
    addProcess(9, "/usr/bin/python3");
    read();
    EXPECT_EQ(idOf({"org.example.Editor", "Browser-ESR", 7}), "org.example.Editor");
    EXPECT_EQ(idOf({"org.example.Unknown", "browser-esr", 7}), "browser-esr");
    EXPECT_EQ(idOf({"", "Notes", 7}), "notes");
    EXPECT_EQ(idOf({"", "Editor", 0}), "org.example.Editor");
    EXPECT_EQ(idOf({"", "XTerm", 7}), "debian-term");
    EXPECT_EQ(idOf({"", "Something", 8}), "notes");
    EXPECT_EQ(idOf({"", "MyScript", 9}), "x11:myscript");
}

TEST_F(ApplicationIdentitiesTest, FallsBackToTheClassThenTheProgramThenTheUnknown)
{
    addProcess(7, "/opt/tool/Tool");
    read();
    EXPECT_EQ(identities->identify({"", "Navigator", 3}),
              (ApplicationIdentity{"x11:navigator", "Navigator"}));
    EXPECT_EQ(identities->identify({"app.only", "", 3}), (ApplicationIdentity{"x11:app.only", "app.only"}));
    EXPECT_EQ(identities->identify({"", "", 7}), (ApplicationIdentity{"x11:tool", "Tool"}));
    EXPECT_EQ(identities->identify({}), (ApplicationIdentity{"x11:unknown", unknownApplicationName}));
}

TEST_F(ApplicationIdentitiesTest, ShowsTheNameInTheUsersLanguage)
{
    addEntry("system", "both.desktop", "Name[fr]=Trois\nName[de]=Zwei\nName=One\nName[de_AT]=Zwa");
    addEntry("system", "language.desktop", "Name=One\nName[de]=Zwei\nName[de_CH]=Zwöi");
    addEntry("system", "neither.desktop", "Name=One\nName[fr]=Trois");
    read();
    EXPECT_EQ(identities->identify({"", "both", 0}).displayName, "Zwa");
    EXPECT_EQ(identities->identify({"", "language", 0}).displayName, "Zwei");
    EXPECT_EQ(identities->identify({"", "neither", 0}).displayName, "One");
}

TEST_F(ApplicationIdentitiesTest, LetsTheUsersEntriesReplaceAndHideTheSystems)
{
    addEntry("system", "kept.desktop", "Name=System's");
    addEntry("user", "kept.desktop", "Name=User's");
    addEntry("system", "gone.desktop", "Name=System's");
    addEntry("user", "gone.desktop", "Name=User's\nHidden=true");
    addEntry("system", "vendor/tool.desktop", "Name=In a folder");
    read();
    EXPECT_EQ(identities->identify({"", "kept", 0}).displayName, "User's");
    EXPECT_EQ(idOf({"", "gone", 0}), "x11:gone");
    EXPECT_EQ(idOf({"vendor-tool", "", 0}), "vendor-tool");
}

TEST_F(ApplicationIdentitiesTest, NoticesWhatIsInstalledLater)
{
    read();
    EXPECT_EQ(idOf({"", "late", 0}), "x11:late");
    addEntry("user", "late.desktop", "Name=Late");
    EXPECT_EQ(idOf({"", "late", 0}), "late");
}

} // namespace stintbook
