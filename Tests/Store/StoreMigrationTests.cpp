// The stores of earlier versions, as those wrote them. Where a new version comes, its store is the one of the version
// before, opened by the new one and given rows of what came with it; those of shipped versions never change.

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "Store/StoreCheck.h"
#include "Store/StoreInstanceLock.h"
#include "Store/StoreSchema.h"
#include "StoreSamples.h"
#include "Support/CapturedLog.h"

namespace stintbook {
namespace {

/// A copy of the store that a version wrote.
struct EarlierStore : SampleStore {
    explicit EarlierStore(int version)
        : backup(file.string() + fmt::format(".v{}-backup", version))
    {
        std::filesystem::copy_file(fixture(version), file);
    }

    std::filesystem::path backup;
};

std::vector<std::string> declarations(StoreDatabase& database)
{
    return *database.read([](StoreConnection& connection) -> Stored<std::vector<std::string>> {
        std::vector<std::string> texts;
        auto rows = connection.query("SELECT type || name || ifnull(sql, '') FROM sqlite_schema ORDER BY 1");
        while (rows.next())
            texts.push_back(rows.take<std::string>());
        return texts;
    });
}

class StoreMigration : public testing::TestWithParam<int> { };

TEST_P(StoreMigration, KeepsEveryRecordOfTheEarlierVersionReadable)
{
    const CapturedLog log;
    const EarlierStore store(GetParam());
    StoreConnection earlier(fixture(GetParam()), StoreConnection::Access::immutable);
    const auto columns = storedColumns(earlier);
    const auto records = storedRows(earlier, columns);

    const auto database = store.open();
    EXPECT_EQ(*database->read([&](StoreConnection& connection) -> Stored<std::vector<std::string>> {
        return storedRows(connection, columns);
    }),
              records);
    EXPECT_TRUE(
        checkStore(*database, [](const StoreFinding& finding) { ADD_FAILURE() << message(finding); }));
    // What earlier exports always had.
    const auto snapshots = *PersistentReviewStore(database).snapshots();
    for (const auto& snapshot : snapshots) {
        EXPECT_EQ(snapshot.fields.tokens(),
                  fmt::format("{}client,project,duration,description,rateAndAmount",
                              GetParam() < 7 ? "date," : ""));
    }
}

TEST_P(StoreMigration, EndsInTheLayoutOfAFreshStoreAndKeepsACopy)
{
    const CapturedLog log;
    const EarlierStore store(GetParam());
    const SampleStore fresh;
    const auto before = contentsOf(store.file);
    const auto database = store.open(StoreRole::guest);
    EXPECT_EQ(declarations(*database), declarations(*fresh.open()));
    EXPECT_EQ(number(*database, "PRAGMA user_version"), currentSchemaVersion);
    EXPECT_TRUE(isSound(*database));

    if (GetParam() == currentSchemaVersion) {
        EXPECT_EQ(contentsOf(store.file), before);
        EXPECT_FALSE(std::filesystem::exists(store.backup));
        return;
    }
    StoreConnection copy(store.backup, StoreConnection::Access::immutable);
    StoreConnection earlier(fixture(GetParam()), StoreConnection::Access::immutable);
    EXPECT_EQ(copy.number("PRAGMA user_version"), GetParam());
    EXPECT_EQ(storedRows(copy, storedColumns(copy)), storedRows(earlier, storedColumns(earlier)));
    EXPECT_EQ(std::filesystem::status(store.backup).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST_P(StoreMigration, KnowsTheLayoutThatItsStepsMake)
{
    const auto made = StoreConnection::inMemory();
    applySchemaSteps(*made, 0, GetParam());
    EXPECT_EQ(layoutDigest(*made), expectedLayoutDigest(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(FromEveryVersion, StoreMigration, testing::Range(1, currentSchemaVersion + 1));

TEST(StoreMigrationRefused, LeavesAnEarlierStoreToTheCopyThatRuns)
{
    const EarlierStore store(3);
    const auto lock = StoreInstanceLock::acquire(store.file);
    const auto before = filesIn(store.directory.path());
    EXPECT_TRUE(store.refusal(StoreRole::guest).contains("in use by an earlier version"));
    EXPECT_EQ(filesIn(store.directory.path()), before);
}

} // namespace
} // namespace stintbook
