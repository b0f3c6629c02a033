#include <gtest/gtest.h>

#include "Platform/ApplicationIdentities.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {

namespace fs = std::filesystem;

namespace {

class ApplicationIdentitiesTest : public testing::Test {
protected:
    void addEntry(const std::string& place, const std::string& file, const std::string& lines)
    {
        const auto path = root / place / "applications" / file;
        fs::create_directories(path.parent_path());
        writeFile(path,
                  "# A comment\n[Desktop Entry]\nType=Application\n" + lines
                      + "\n[Desktop Action new]\nName=Not this\nExec=other\n");
    }
    void addProcess(int number, const std::string& executable)
    {
        const auto directory = root / "proc" / std::to_string(number);
        fs::create_directories(directory);
        fs::create_symlink(executable, directory / "exe");
    }
    std::string idOf(const WindowHints& hints) { return identities.identify(hints).bundleIdentifier; }
    std::string nameOf(const char* entry) { return identities.identify({"", entry, 0}).displayName; }

    TemporaryDirectory root;
    /// Reads the entries when it is first asked.
    ApplicationIdentities identities{{.dataDirectories = {root / "user", root / "system"},
                                      .locale = "de_AT.UTF-8",
                                      .processes = root / "proc"}};
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
    EXPECT_EQ(idOf({"org.example.Editor", "Browser-ESR", 7}), "org.example.Editor");
    EXPECT_EQ(idOf({"org.example.Unknown", "browser-esr", 7}), "browser-esr");
    EXPECT_EQ(idOf({"", "Notes", 7}), "notes");
    EXPECT_EQ(idOf({"", "Editor", 0}), "org.example.Editor");
    EXPECT_EQ(idOf({"", "XTerm", 7}), "debian-term");
    EXPECT_EQ(idOf({"", "Something", 8}), "notes");
    EXPECT_EQ(idOf({"", "MyScript", 9}), "x11:myscript");

    addEntry("user", "notes.desktop", "Name=Notes\nHidden=true");
    addEntry("user", "python.desktop", "Name=Python\nNoDisplay=true");
    ApplicationIdentities anew({.dataDirectories = {root / "user", root / "system"}});
    EXPECT_EQ(anew.installed(),
              (std::vector<ApplicationIdentity>{
                  {"browser-esr", "Browser"}, {"debian-term", "Term"}, {"org.example.Editor", "Editor"}}));
}

TEST_F(ApplicationIdentitiesTest, FallsBackToTheClassThenTheProgramUntilAnEntryIsInstalled)
{
    addProcess(7, "/opt/tool/Tool");
    EXPECT_EQ(identities.identify({"", "Navigator", 3}), (ApplicationIdentity{"x11:navigator", "Navigator"}));
    EXPECT_EQ(identities.identify({"app.only", "", 3}), (ApplicationIdentity{"x11:app.only", "app.only"}));
    EXPECT_EQ(identities.identify({"", "", 7}), (ApplicationIdentity{"x11:tool", "Tool"}));
    EXPECT_EQ(identities.identify({}), (ApplicationIdentity{"x11:unknown", unknownApplicationName}));

    addEntry("user", "navigator.desktop", "Name=Seafaring");
    EXPECT_EQ(identities.identify({"", "Navigator", 3}), (ApplicationIdentity{"navigator", "Seafaring"}));
}

TEST_F(ApplicationIdentitiesTest, ShowsTheNameInTheUsersLanguageAndAsTheUserChangedIt)
{
    addEntry("system", "both.desktop", "Name[fr]=Trois\nName[de]=Zwei\nName=One\nName[de_AT]=Zwa");
    addEntry("system", "language.desktop", "Name=One\nName[de]=Zwei\nName[de_CH]=Zwöi");
    addEntry("system", "neither.desktop", "Name=One\nName[fr]=Trois");
    addEntry("system", "kept.desktop", "Name=System's");
    addEntry("user", "kept.desktop", "Name=User's");
    addEntry("system", "gone.desktop", "Name=System's");
    addEntry("user", "gone.desktop", "Name=User's\nHidden=true");
    addEntry("system", "vendor/tool.desktop", "Name=In a folder");
    EXPECT_EQ(nameOf("both"), "Zwa");
    EXPECT_EQ(nameOf("language"), "Zwei");
    EXPECT_EQ(nameOf("neither"), "One");
    EXPECT_EQ(nameOf("kept"), "User's");
    EXPECT_EQ(idOf({"", "gone", 0}), "x11:gone");
    EXPECT_EQ(idOf({"vendor-tool", "", 0}), "vendor-tool");
}

} // namespace stintbook
