#include <gtest/gtest.h>

#include "Base/FileReplacement.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {
namespace {

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

TEST(FileReplacement, ShowsNothingUntilItIsWholeAndLeavesNothingWhenItIsNot)
{
    const TemporaryDirectory directory;
    const auto file = directory / "data.json";
    {
        auto abandoned = FileReplacement::begin(file, 0600);
        ASSERT_TRUE(abandoned);
        EXPECT_TRUE(abandoned->append("a part"));
        EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
    }
    auto replacement = FileReplacement::begin(file, 0600);
    ASSERT_TRUE(replacement);
    EXPECT_TRUE(replacement->append("the "));
    // Somebody else is faster.
    writeFile(file, "other");
    EXPECT_TRUE(replacement->append("whole"));
    EXPECT_TRUE(replacement->commit());
    EXPECT_EQ(filesIn(directory.path()), (std::map<std::string, std::string>{{"data.json", "the whole"}}));
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(file).permissions(), perms::owner_read | perms::owner_write);
}

} // namespace
} // namespace stintbook
