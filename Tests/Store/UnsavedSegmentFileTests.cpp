#include <gmock/gmock.h>

#include "Store/UnsavedSegmentFile.h"
#include "StoreSamples.h"
#include "Support/CapturedLog.h"

namespace stintbook {
namespace {

using testing::IsEmpty;

struct UnsavedSegments : testing::Test {
    SampleStore store;
    std::filesystem::path file = store.file.string() + ".unsaved";
    std::shared_ptr<StoreDatabase> database = store.open();
    PersistentActivitySegmentRepository repository{database};
    CapturedLog log;

    std::vector<ActivitySegment> stored() const { return *repository.segments(allTime); }
};

TEST_F(UnsavedSegments, AreSavedAtTheNextStartAsFarAsTheyAreMissing)
{
    auto segments = sampleSegments(0, 3);
    segments[1].browserDomain = BrowserDomain::fromText("example.org");
    segments[1].context = FocusedContext::documentTitle("Ünïcödé \"title\" \\ /");
    segments[2].end = segments[2].start + Seconds{0.1};
    ASSERT_TRUE(repository.save(std::span(segments).first(1)));

    auto kept = segments;
    kept[0].end = kept[0].end + Seconds{1};
    UnsavedSegmentFile(store.file).keep(kept);
    EXPECT_EQ(std::filesystem::status(file).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);

    const auto leftDraft = file.string() + ".0123abcd";
    writeFile(leftDraft, "[");
    UnsavedSegmentFile next(store.file);
    EXPECT_EQ(*next.recover(repository), 2);
    EXPECT_FALSE(std::filesystem::exists(leftDraft));
    EXPECT_EQ(stored(), segments);
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_EQ(*next.recover(repository), 0);

    next.keep(segments);
    next.keep({});
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(UnsavedSegments, StayKeptWhileTheStoreRefusesThem)
{
    UnsavedSegmentFile(store.file).keep(sampleSegments(0, 2));
    execute(
        *database,
        "CREATE TEMP TRIGGER Refusal BEFORE INSERT ON ActivitySegment BEGIN SELECT RAISE(FAIL, 'no'); END");
    UnsavedSegmentFile next(store.file);
    EXPECT_FALSE(next.recover(repository));
    next.keep(sampleSegments(2, 1));
    next.keep({});
    next.keep(sampleSegments(3, 1));

    execute(*database, "DROP TRIGGER Refusal");
    EXPECT_EQ(*UnsavedSegmentFile(store.file).recover(repository), 3);
}

TEST_F(UnsavedSegments, OfADamagedFileArePutAside)
{
    UnsavedSegmentFile(store.file).keep(sampleSegments(0, 2));
    const auto whole = contentsOf(file);
    for (const auto& damage : {std::string(), whole.substr(0, whole.size() / 2), std::string("[{}]"),
                               std::string("{}"), std::string("[1]"), std::string("\0\0\0", 3)}) {
        writeFile(file, damage);
        EXPECT_EQ(*UnsavedSegmentFile(store.file).recover(repository), 0);
        EXPECT_FALSE(std::filesystem::exists(file));
        EXPECT_EQ(contentsOf(file.string() + ".damaged"), damage);
    }
    EXPECT_THAT(stored(), IsEmpty());
    EXPECT_EQ(log.errors().size(), 6U);
}

TEST_F(UnsavedSegments, ThatCannotBeKeptAreReportedOnce)
{
    UnsavedSegmentFile unsaved(store.directory / "missing/Velloran.store");
    unsaved.keep(sampleSegments(0, 1));
    unsaved.keep(sampleSegments(0, 2));
    EXPECT_EQ(log.errors().size(), 1U);
}

} // namespace
} // namespace stintbook
