#include <gtest/gtest.h>

#include "Store/StoreLocation.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {
namespace {

namespace files = std::filesystem;

struct StoreLocation : testing::Test {
    TemporaryDirectory base;

    auto located(BuildKind kind, const Environment& environment = {}) const
    {
        return storeLocation({.baseDirectory = base.path(), .environment = environment, .kind = kind});
    }
    auto chosen(BuildKind kind, const files::path& directory) const
    {
        return located(kind, {{"STINTBOOK_STORE_DIRECTORY", directory.string()}});
    }
    /// The directory that a development build refused, if it did.
    files::path refused(const files::path& directory) const
    {
        const auto location = chosen(BuildKind::development, directory);
        if (location || !std::holds_alternative<RealStoreRefusal>(location.error()))
            return {};
        return std::get<RealStoreRefusal>(location.error()).realDirectory;
    }
};

TEST_F(StoreLocation, LiesInTheDataDirectoryOfTheUserWithADevelopmentBuildsStoreApart)
{
    EXPECT_EQ(located(BuildKind::installed), base / "Velloran/Velloran.store");
    EXPECT_EQ(located(BuildKind::development, {{"STINTBOOK_STORE_DIRECTORY", ""}}),
              base / "Velloran Development/Velloran.store");
    EXPECT_EQ(files::status(base / "Velloran Development").permissions(), files::perms::owner_all);

    const auto data = base / "data/nested";
    EXPECT_EQ(storeLocation({.environment = {{"XDG_DATA_HOME", data}}, .kind = BuildKind::installed}),
              data / "Velloran/Velloran.store");
    EXPECT_EQ(storeLocation({.environment = {{"XDG_DATA_HOME", "relative"}, {"HOME", base.path()}},
                             .kind = BuildKind::installed}),
              base / ".local/share/Velloran/Velloran.store");
}

TEST_F(StoreLocation, RefusesTheInstalledCopysDirectoriesToADevelopmentBuild)
{
    files::create_directories(base / "Velloran/inside");
    files::create_directories(base / "elsewhere");
    files::create_directory_symlink(base / "Velloran/inside", base / "elsewhere/link");
    files::create_directory_symlink("../Stintbook", base / "elsewhere/dangling");

    EXPECT_EQ(refused(base / "Velloran"), base / "Velloran");
    EXPECT_EQ(refused(base / "Velloran/inside/deeper"), base / "Velloran");
    EXPECT_EQ(refused(base / "elsewhere/.././Velloran/"), base / "Velloran");
    EXPECT_EQ(refused(base / "elsewhere/link/deeper"), base / "Velloran");
    EXPECT_EQ(refused(base / "elsewhere/link/../new"), base / "Velloran");
    EXPECT_EQ(refused(base / "elsewhere/dangling"), base / "Stintbook");
    EXPECT_FALSE(files::exists(base / "Stintbook"));
    EXPECT_FALSE(files::exists(base / "Velloran/inside/deeper"));

    EXPECT_EQ(chosen(BuildKind::development, base / "Velloran Development"),
              base / "Velloran Development/Velloran.store");
    EXPECT_EQ(chosen(BuildKind::development, base / "a/b/c"), base / "a/b/c/Velloran.store");
    EXPECT_EQ(chosen(BuildKind::installed, base / "Velloran"), base / "Velloran/Velloran.store");
}

TEST_F(StoreLocation, SaysWhichDirectoryADevelopmentBuildLeavesAlone)
{
    const StoreLocationProblem problem = RealStoreRefusal{"/home/ada/.local/share/Velloran"};
    EXPECT_EQ(message(problem, "/home/ada"),
              "This is a development build, and it will not open the store in ~/.local/share/Velloran. That "
              "directory "
              "belongs to the installed copy of Velloran. Point STINTBOOK_STORE_DIRECTORY at a directory of "
              "its own.");
    EXPECT_TRUE(message(problem, "/home/ad").contains("/home/ada/.local/share/Velloran. "));
}

TEST_F(StoreLocation, CarriesOverTheEarlierStoreButToNoCurrentOneAndToNoDevelopmentBuild)
{
    files::create_directories(base / "Stintbook");
    for (const std::string suffix : {"", "-wal"})
        writeFile(base / ("Stintbook/Stintbook.store" + suffix), "earlier" + suffix);
    ASSERT_TRUE(located(BuildKind::development));
    EXPECT_TRUE(filesIn(base / "Velloran Development").empty());

    ASSERT_TRUE(located(BuildKind::installed));
    EXPECT_EQ(filesIn(base / "Velloran"),
              (std::map<std::string, std::string>{{"Velloran.store", "earlier"},
                                                  {"Velloran.store-wal", "earlier-wal"}}));
    EXPECT_EQ(filesIn(base / "Stintbook").size(), 2U);
    EXPECT_EQ(files::status(base / "Velloran/Velloran.store").permissions(),
              files::perms::owner_read | files::perms::owner_write);

    writeFile(base / "Velloran/Velloran.store", "current");
    ASSERT_TRUE(located(BuildKind::installed));
    EXPECT_EQ(contentsOf(base / "Velloran/Velloran.store"), "current");
}

TEST_F(StoreLocation, ReportsADirectoryThatCannotBeMade)
{
    writeFile(base / "file", "");
    const auto location = chosen(BuildKind::installed, base / "file/store");
    ASSERT_FALSE(location);
    EXPECT_TRUE(message(location.error()).contains((base / "file").string()));
}

} // namespace
} // namespace stintbook
