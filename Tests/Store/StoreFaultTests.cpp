// What a store holds after its disk failed or its process was killed, at every single write.

#include <csignal>
#include <functional>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "StoreSamples.h"
#include "Support/FaultyFileSystem.h"

namespace stintbook {
namespace {

using Fault = FaultyFileSystem::Fault;

/// A change, and the question whether all of it is there (1), nothing (0) or a part (-1).
struct Change {
    std::function<bool(const std::shared_ptr<StoreDatabase>&)> make;
    std::function<int(const std::shared_ptr<StoreDatabase>&)> extent;
};

Change savingSegments()
{
    return {[](const auto& database) {
                return PersistentActivitySegmentRepository(database).save(sampleSegments(10, 40)).has_value();
            },
            [](const auto& database) {
                const auto count = PersistentActivitySegmentRepository(database).segments(allTime)->size();
                return count == 50 ? 1 : count == 10 ? 0 : -1;
            }};
}

Change freezingAndApproving()
{
    auto frozen = sampleItem(3);
    frozen.description = std::string(6000, 'x');
    const ReviewedLayerMutation mutation{.upserts = {frozen, sampleItem(4)},
                                         .deletions = {sampleItem(0).id},
                                         .reviewUpserts = {{numbered<SegmentID>(9), {.isIgnored = true}}},
                                         .approval =
                                             ReviewedDayApproval{sampleDay, {std::string(64, 'a')}, {1}}};
    return {[=](const auto& database) { return PersistentReviewStore(database).apply(mutation).has_value(); },
            [=](const auto& database) {
                const PersistentReviewStore store(database);
                const auto items = *store.items(sampleDay);
                const auto isApproved = store.approval(sampleDay)->has_value();
                const auto reviews = store.reviews(std::vector{numbered<SegmentID>(9)})->size();
                if (items == std::vector{frozen, sampleItem(4)} && isApproved && reviews == 1)
                    return 1;
                return items == std::vector{sampleItem(0)} && !isApproved && reviews == 0 ? 0 : -1;
            }};
}

/// Makes the change with the disk failing from each of its writes on, until it meets no failure.
void expectWholeOrNothing(const Change& change, Fault fault)
{
    FaultyFileSystem disk;
    for (int operation = 1; operation < 500; ++operation) {
        SCOPED_TRACE(operation);
        const SampleStore store;
        {
            const auto database = store.open();
            ASSERT_TRUE(PersistentActivitySegmentRepository(database).save(sampleSegments(0, 10)));
            ASSERT_TRUE(PersistentReviewStore(database).apply({.upserts = {sampleItem(0)}}));
        }
        bool accepted = false;
        bool failed = false;
        {
            const auto database = store.open(StoreRole::owner, disk.name());
            disk.failFrom(operation, fault);
            accepted = change.make(database);
            failed = disk.hasFailed();
            if (!accepted) {
                // In this process nothing of it may be seen either.
                EXPECT_EQ(change.extent(database), 0);
            }
        }
        disk.recover();
        const auto database = store.open();
        EXPECT_TRUE(isSound(*database));
        const auto extent = change.extent(database);
        EXPECT_TRUE(accepted ? extent == 1 : extent >= 0) << extent;
        if (fault == Fault::diskFull && !accepted) {
            EXPECT_EQ(extent, 0);
        }
        EXPECT_TRUE(change.make(database));
        EXPECT_EQ(change.extent(database), 1);
        if (!failed)
            return;
    }
    FAIL() << "the change never went through";
}

TEST(StoreFaults, KeepAChangeWholeOrNotAtAllOnAFullDisk)
{
    expectWholeOrNothing(savingSegments(), Fault::diskFull);
    expectWholeOrNothing(freezingAndApproving(), Fault::diskFull);
}

TEST(StoreFaults, KeepAChangeWholeOrNotAtAllOnABrokenDisk)
{
    expectWholeOrNothing(savingSegments(), Fault::inputOutput);
    expectWholeOrNothing(freezingAndApproving(), Fault::tornWrite);
}

TEST(StoreFaults, LeaveNothingBehindWhereAStoreCouldNotBeCreated)
{
    FaultyFileSystem disk;
    for (int operation = 1; operation < 500; ++operation) {
        const SampleStore store;
        disk.failFrom(operation, Fault::diskFull);
        const auto created = StoreDatabase::open({.file = store.file, .fileSystem = disk.name()});
        const bool failed = disk.hasFailed();
        disk.recover();
        if (!created) {
            EXPECT_TRUE(message(created.error()).contains("the disk is full")) << message(created.error());
            EXPECT_TRUE(filesIn(store.directory.path()).empty());
        }
        if (!failed)
            return;
    }
    FAIL() << "the store was never created";
}

TEST(StoreFaults, SayThatTheDiskIsFull)
{
    const auto database = StoreDatabase::inMemory();
    execute(*database, "PRAGMA max_page_count = 1");
    const auto saved = PersistentActivitySegmentRepository(database).save(sampleSegments(0, 2000));
    ASSERT_FALSE(saved);
    EXPECT_EQ(message(saved.error()), "The disk that holds the store is full.");
}

/// Kills a process that saves segment after segment once it has acknowledged `count`; answers how many it had
/// acknowledged in the end.
std::uint32_t acknowledgedBeforeKill(std::uint32_t count, const SampleStore& store)
{
    int channel[2];
    EXPECT_EQ(pipe(channel), 0);
    const auto child = fork();
    if (child == 0) {
        close(channel[0]);
        PersistentActivitySegmentRepository segments(store.open());
        for (std::uint32_t minute = 0;; ++minute) {
            if (!segments.save({{sampleSegment(minute)}}) || write(channel[1], "+", 1) != 1)
                _exit(1);
        }
    }
    close(channel[1]);
    std::uint32_t acknowledged = 0;
    for (char mark = 0; read(channel[0], &mark, 1) == 1;) {
        if (++acknowledged == count)
            kill(child, SIGKILL);
    }
    close(channel[0]);
    waitpid(child, nullptr, 0);
    return acknowledged;
}

/// The store holds the first segments, without a hole; answers how many.
std::uint32_t storedPrefix(const SampleStore& store)
{
    const auto database = store.open();
    EXPECT_TRUE(isSound(*database));
    const auto segments = *PersistentActivitySegmentRepository(database).segments(allTime);
    const auto count = static_cast<std::uint32_t>(segments.size());
    EXPECT_EQ(segments, sampleSegments(0, count));
    return count;
}

TEST(StoreKills, CostNoSegmentThatWasAcknowledged)
{
    for (const std::uint32_t count : {1U, 2U, 7U, 30U, 150U}) {
        const SampleStore store;
        const auto acknowledged = acknowledgedBeforeKill(count, store);
        const auto stored = storedPrefix(store);
        EXPECT_GE(stored, acknowledged);
        EXPECT_LE(stored, acknowledged + 1);
    }
}

} // namespace
} // namespace stintbook
