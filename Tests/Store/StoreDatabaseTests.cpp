#include <thread>

#include <gmock/gmock.h>

#include "Store/StoreInformation.h"
#include "Store/StoreInstanceLock.h"
#include "Store/StoreSchema.h"
#include "StoreSamples.h"

namespace stintbook {
namespace {

using testing::HasSubstr;

TEST(StoreDatabase, CreatesAPrivateStoreOfTheCurrentVersion)
{
    const SampleStore store;
    const auto database = store.open();
    EXPECT_EQ(number(*database, "PRAGMA user_version"), 9);
    EXPECT_EQ(number(*database, "PRAGMA application_id"), storeApplicationID);
    EXPECT_EQ(number(*database, "PRAGMA auto_vacuum"), 2);
    EXPECT_EQ(number(*database, "PRAGMA secure_delete"), 1);
    EXPECT_EQ(number(*database, "PRAGMA synchronous"), 2);
    EXPECT_EQ(number(*database, "PRAGMA foreign_keys"), 1);
    ASSERT_TRUE(PersistentActivitySegmentRepository(database).save(sampleSegments(0, 1)));
    for (const auto* suffix : {"", "-wal", "-shm"})
        EXPECT_EQ(std::filesystem::status(store.file.string() + suffix).permissions(),
                  std::filesystem::perms::owner_read | std::filesystem::perms::owner_write)
            << suffix;
}

TEST(StoreDatabase, KeepsWhatAGuestWroteBesideTheOwner)
{
    const SampleStore store;
    const auto owner = store.open();
    const auto version = *owner->dataVersion();
    {
        PersistentActivitySegmentRepository guest(store.open(StoreRole::guest));
        ASSERT_TRUE(guest.save(sampleSegments(0, 3)));
    }
    EXPECT_NE(*owner->dataVersion(), version);
    const auto seen = *owner->dataVersion();
    ASSERT_TRUE(PersistentActivitySegmentRepository(owner).save(sampleSegments(3, 1)));
    EXPECT_NE(*owner->dataVersion(), seen);
    EXPECT_EQ(*owner->dataVersion(), *owner->dataVersion());
    EXPECT_EQ(*PersistentActivitySegmentRepository(owner).segments(allTime), sampleSegments(0, 4));
}

TEST(StoreDatabase, AGuestLeavesTheLogToTheOwner)
{
    const SampleStore store;
    store.open();
    const auto before = contentsOf(store.file);
    ASSERT_TRUE(PersistentActivitySegmentRepository(store.open(StoreRole::guest)).save(sampleSegments(0, 3)));
    EXPECT_EQ(contentsOf(store.file), before);
    store.open();
    EXPECT_NE(contentsOf(store.file), before);
    EXPECT_FALSE(std::filesystem::exists(store.file.string() + "-wal"));
}

TEST(StoreDatabase, AGuestFoldsInALongLogWhenNobodyElseWill)
{
    const SampleStore store;
    store.open();
    const auto writeALot = [&] {
        PersistentActivitySegmentRepository guest(store.open(StoreRole::guest));
        ASSERT_TRUE(guest.save(sampleSegments(0, 20'000)));
    };
    {
        const auto lock = StoreInstanceLock::acquire(store.file);
        writeALot();
        EXPECT_GT(std::filesystem::file_size(store.file.string() + "-wal"), 4U << 20U);
    }
    writeALot();
    EXPECT_EQ(std::filesystem::file_size(store.file.string() + "-wal"), 0U);
}

TEST(StoreDatabase, RollsBackWorkThatEndsInARefusal)
{
    const auto database = StoreDatabase::inMemory();
    const auto refused = database->write([](StoreConnection& connection) -> Stored<void> {
        connection.execute("INSERT INTO BillingSettings VALUES ('billing-settings', 'EUR')");
        return std::unexpected(StoreFailure{"no"});
    });
    EXPECT_FALSE(refused);
    EXPECT_EQ(number(*database, "SELECT count(*) FROM BillingSettings"), 0);
}

TEST(StoreDatabase, SaysThatAnotherProgramIsWriting)
{
    const SampleStore store;
    const auto one = store.open();
    const auto other = store.open(StoreRole::guest);
    ASSERT_TRUE(other->read([](StoreConnection& connection) -> Stored<void> {
        connection.execute("PRAGMA busy_timeout = 0");
        return {};
    }));
    ASSERT_TRUE(one->write([&](StoreConnection&) -> Stored<void> {
        const auto saved = PersistentActivitySegmentRepository(other).save(sampleSegments(0, 1));
        EXPECT_FALSE(saved);
        EXPECT_THAT(message(saved.error()), HasSubstr("Another program is using the store"));
        return {};
    }));
}

TEST(StoreDatabase, TellsWhatItHolds)
{
    const SampleStore store;
    const auto database = store.open();
    auto segments = sampleSegments(5, 3);
    // A long one outlasts those that start after it.
    segments.front().end = sampleSegment(40).end;
    ASSERT_TRUE(PersistentActivitySegmentRepository(database).save(segments));
    const auto information = *storeInformation(*database);
    EXPECT_EQ(information.tables.size(), 20U);
    EXPECT_EQ(information.tables.front().recordCount, 3);
    EXPECT_GT(information.fileSize, 0U);
    EXPECT_GT(information.logSize, 0U);
    EXPECT_EQ(information.recorded, (Interval{sampleSegment(5).start, sampleSegment(40).end}));
}

struct StoreRefusal : testing::Test {
    SampleStore store;

    /// A store with a segment, closed so that its file holds everything.
    StoreRefusal()
    {
        EXPECT_TRUE(PersistentActivitySegmentRepository(store.open()).save(sampleSegments(0, 500)));
        whole = contentsOf(store.file);
    }

    /// With these contents opening is refused in every role, and nothing in the directory changes.
    void expectRefusal(const std::string& contents, const std::string& sentence) const
    {
        writeFile(store.file, contents);
        expectRefusal(sentence);
    }
    void expectRefusal(const std::string& sentence) const
    {
        const auto before = filesIn(store.directory.path());
        for (const auto role : {StoreRole::reader, StoreRole::guest, StoreRole::owner}) {
            EXPECT_THAT(store.refusal(role), HasSubstr(sentence));
            EXPECT_EQ(filesIn(store.directory.path()), before) << sentence;
        }
    }
    std::string overwritten(std::size_t offset, std::string_view bytes) const
    {
        return std::string(whole).replace(offset, bytes.size(), bytes);
    }

    std::string whole;
};

TEST_F(StoreRefusal, LeavesWhatIsForeignNewerCutShortOrDamagedAsItIs)
{
    expectRefusal(overwritten(60, std::string_view("\0\0\0\x0a", 4)),
                  "was written by a newer version of Velloran");
    expectRefusal(overwritten(68, "XYZW"), "is not a Velloran store");
    expectRefusal("Dear diary, today I did not write a database.", "is not a Velloran store");
    expectRefusal("", "is empty and not a Velloran store");
    for (const auto size :
         {std::size_t{20}, std::size_t{99}, std::size_t{4096}, whole.size() / 2, whole.size() - 1})
        expectRefusal(whole.substr(0, size), "is cut short");
    expectRefusal(overwritten(16, "\x11\x11"), "is damaged");
    expectRefusal(overwritten(56, std::string_view("\0\0\0\x02", 4)), "is damaged");
    expectRefusal(overwritten(100, std::string(200, '\xee')), "is damaged");

    std::filesystem::remove(store.file);
    std::filesystem::create_directory(store.file);
    expectRefusal("is not a Velloran store");
}

TEST_F(StoreRefusal, NoticesMissingPagesBehindALogToo)
{
    ASSERT_TRUE(
        PersistentActivitySegmentRepository(store.open(StoreRole::guest)).save(sampleSegments(500, 1)));
    expectRefusal(contentsOf(store.file).substr(0, 8192), "is cut short");
}

TEST_F(StoreRefusal, LeavesAStoreWithOtherTables)
{
    for (const auto* change : {"CREATE TABLE Other (id INTEGER)", "DROP TABLE ClientAppearance",
                               "ALTER TABLE Client ADD COLUMN mood TEXT", "DROP INDEX ActivitySegmentByStart",
                               "CREATE TRIGGER Spy AFTER INSERT ON Client BEGIN DELETE FROM Client; END"}) {
        writeFile(store.file, whole);
        SQLite::Database(store.file.string(), SQLite::OPEN_READWRITE).exec(change);
        expectRefusal("are not those that its version has");
    }
}

TEST(StoreDatabaseThreads, BothStoresWriteAtTheSameTimeOverOneConnection)
{
    const SampleStore store;
    const auto database = store.open();
    {
        const std::jthread capture([&] {
            PersistentActivitySegmentRepository segments(database);
            for (std::uint32_t minute = 0; minute < 200; ++minute)
                EXPECT_TRUE(segments.save({{sampleSegment(minute)}}));
        });
        const std::jthread review([&] {
            PersistentReviewStore reviews(database);
            for (std::uint32_t minute = 0; minute < 200; ++minute)
                EXPECT_TRUE(reviews.apply({.upserts = {sampleItem(minute)}}));
        });
    }
    EXPECT_EQ(number(*database, "SELECT count(*) FROM ActivitySegment"), 200);
    EXPECT_EQ(number(*database, "SELECT count(*) FROM ReviewedSourceSlice"), 200);
    EXPECT_TRUE(isSound(*database));
}

} // namespace
} // namespace stintbook
