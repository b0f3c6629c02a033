// What a store holds after its disk failed, its machine lost power or its process was killed, at every single
// write of everything that is ever written.

#include <algorithm>
#include <csignal>
#include <functional>
#include <ostream>

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "FilledStore.h"
#include "Store/ActivityDeletion.h"
#include "Support/CapturedLog.h"
#include "Support/FaultyFileSystem.h"

namespace stintbook {
namespace {

using Fault = FaultyFileSystem::Fault;

/// Something that changes a filled store; false when it said that it did not.
struct Change {
    const char* name;
    std::function<bool(const std::shared_ptr<StoreDatabase>&)> make;
};

/// A change of what the user makes and decides.
template <typename Edit> Change review(const char* name, Edit edit)
{
    return {name, [edit](const auto& database) {
                PersistentReviewStore store(database);
                return edit(store).has_value();
            }};
}

const std::vector<Change>& everyChange()
{
    static const std::vector<Change> changes = {
        {"segments are saved",
         [](const auto& database) {
             auto segments = sampleSegments(10, 40);
             segments[7].context = FocusedContext::windowTitle(std::string(6000, 'x'));
             segments[9].browserDomain = BrowserDomain::fromText("docs.example.org");
             return PersistentActivitySegmentRepository(database).save(segments).has_value();
         }},
        {"a segment is replaced",
         [](const auto& database) {
             auto segment = sampleSegment(0);
             segment.end = segment.end + Seconds{30};
             return PersistentActivitySegmentRepository(database).save({{segment}}).has_value();
         }},
        review("work is frozen and its day approved",
               [](auto& store) {
                   auto frozen = sampleItem(3);
                   frozen.description = std::string(6000, 'x');
                   return store.apply(
                       {.upserts = {frozen, sampleItem(4)},
                        .deletions = {sampleItem(0).id},
                        .reviewUpserts = {{numbered<SegmentID>(9), {.isIgnored = true}}},
                        .approval = ReviewedDayApproval{sampleDay, {std::string(64, 'a')}, {1}}});
               }),
        review("segments are reviewed",
               [](auto& store) {
                   return store.saveReviews({{sampleSegment(0).id, {.isIgnored = true}},
                                             {sampleSegment(1).id, {.isIgnored = true}}});
               }),
        review("a client is changed",
               [](auto& store) {
                   return store.saveClient({sampleClient, "Miller", true, ClientColor::fromText("#FFFFFF")});
               }),
        review("a project is made",
               [](auto& store) { return store.saveProject({sampleProject, sampleClient, "Website"}); }),
        review("a first client comes with its project",
               [](auto& store) {
                   const auto client = numbered<ClientID>(7);
                   return store.create({{client, "Birch"},
                                        {numbered<ProjectID>(7), client, "Garden"},
                                        ClientBillingDefaults{Decimal(80), {}}});
               }),
        review("rules are replaced",
               [](auto& store) {
                   std::vector<AttributionRule> rules;
                   for (std::uint32_t place = 0; place < 30; ++place)
                       rules.push_back({numbered<RuleID>(place + 1),
                                        true,
                                        static_cast<int>(place),
                                        {"a", BrowserDomain::fromText("example.net"), "t"},
                                        sampleClient,
                                        sampleProject,
                                        {}});
                   return store.replaceAttributionRules(rules);
               }),
        review("exclusions are replaced",
               [](auto& store) {
                   return store.replaceExclusionRules(
                       {{numbered<RuleID>(3), true, 0, {.applicationBundleIdentifier = "b"}}});
               }),
        review("the currency is changed",
               [](auto& store) {
                   return store.saveSettings(
                       {BillingCurrency::fromText("USD"), RoundingPolicy::upToNextFifteenMinutes});
               }),
        review("a rate is changed",
               [](auto& store) { return store.saveClientBilling(sampleClient, {Decimal(95), {}}); }),
        review("a project's rate is taken away",
               [](auto& store) { return store.saveProjectBilling(sampleProject, {}); }),
        review("an export is recorded", [](auto& store) { return store.append(sampleSnapshot(5)); }),
        {"a day is deleted",
         [](const auto& database) {
             const auto calendar = *CalendarContext::inZone(sampleDay.timeZoneIdentifier);
             const auto deleted =
                 deleteActivity(*database, *LocalDayRange::between(sampleDay, sampleDay), calendar);
             eraseDeletedRemains(*database, {.patience = {}});
             return deleted.has_value();
         }},
    };
    return changes;
}

/// Every row of every table.
std::vector<std::string> contents(StoreDatabase& database)
{
    return *database.read([](StoreConnection& connection) -> Stored<std::vector<std::string>> {
        std::vector<std::string> rows;
        SQLite::Statement tables(
            connection.database(),
            "SELECT name, (SELECT group_concat('quote(\"' || name || '\")', '||')"
            " FROM pragma_table_info(t.name)) FROM sqlite_schema t WHERE type = 'table'");
        while (tables.executeStep()) {
            const auto table = tables.getColumn(0).getString();
            SQLite::Statement all(connection.database(),
                                  "SELECT " + tables.getColumn(1).getString() + " FROM \"" + table + "\"");
            while (all.executeStep())
                rows.push_back(table + ": " + all.getColumn(0).getString());
        }
        std::ranges::sort(rows);
        return rows;
    });
}

/// A filled store as a file that can be copied.
const std::string& filledStore()
{
    static const std::string bytes = [] {
        const SampleStore store;
        fill(store.open());
        return contentsOf(store.file);
    }();
    return bytes;
}

struct CopiedStore : SampleStore {
    explicit CopiedStore(const std::string& bytes) { writeFile(file, bytes); }
};

enum class Answer { accepted, refused, none };

/// Makes the change in a process of its own, which is killed at that write. None when it was.
Answer answerBeforeKill(const std::function<bool()>& change)
{
    const auto child = fork();
    if (child == 0)
        _exit(change() ? 0 : 1);
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFEXITED(status))
        return Answer::none;
    return WEXITSTATUS(status) == 0 ? Answer::accepted : Answer::refused;
}

/// Makes the change with the disk failing from each of its writes on, until it meets no failure; answers how many
/// writes those were.
int expectWholeOrNothing(const Change& change, StoreRole role, Fault fault)
{
    const testing::ScopedTrace name(__FILE__, __LINE__, change.name);
    std::vector<std::string> before;
    std::vector<std::string> after;
    {
        const CopiedStore store(filledStore());
        const auto database = store.open();
        before = contents(*database);
        EXPECT_TRUE(change.make(database));
        after = contents(*database);
        EXPECT_NE(after, before);
    }

    FaultyFileSystem disk;
    for (int operation = 1; operation < 500; ++operation) {
        const testing::ScopedTrace point(__FILE__, __LINE__, operation);
        const CopiedStore store(filledStore());
        auto answer = Answer::none;
        const auto attempt = [&] {
            const auto database = store.open(role, disk.name());
            disk.failFrom(operation, fault);
            const bool isAccepted = change.make(database);
            // In this process nothing may be seen of what was refused.
            EXPECT_EQ(contents(*database), isAccepted ? after : before);
            return isAccepted;
        };
        bool hasFailed = false;
        if (fault == Fault::kill) {
            answer = answerBeforeKill(attempt);
            hasFailed = answer == Answer::none;
        } else {
            answer = attempt() ? Answer::accepted : Answer::refused;
            hasFailed = disk.hasFailed();
        }
        if (fault == Fault::powerLoss)
            disk.losePower(static_cast<unsigned>(operation));
        disk.recover();

        const auto database = store.open();
        EXPECT_TRUE(isSound(*database));
        const auto found = contents(*database);
        if (answer == Answer::accepted) {
            EXPECT_EQ(found, after);
        } else if (fault == Fault::diskFull || fault == Fault::inputOutputOnce) {
            EXPECT_EQ(found, before);
        } else {
            // The end came before the answer: whole or not at all.
            EXPECT_TRUE(found == before || found == after);
        }
        if (found == before) {
            EXPECT_TRUE(change.make(database));
            EXPECT_EQ(contents(*database), after);
        }
        if (!hasFailed)
            return operation - 1;
    }
    ADD_FAILURE() << "the change never went through";
    return 0;
}

struct DiskFault {
    const char* name;
    Fault fault;
};
void PrintTo(const DiskFault& disk,
             std::ostream* stream) // NOLINT(readability-identifier-naming): GoogleTest's
{
    *stream << disk.name;
}

const auto everyFault = testing::Values(
    DiskFault{"ThatIsFull", Fault::diskFull}, DiskFault{"ThatIsBroken", Fault::inputOutput},
    DiskFault{"ThatFailsOnce", Fault::inputOutputOnce}, DiskFault{"ThatTearsAWrite", Fault::tornWrite},
    DiskFault{"OfAKilledProcess", Fault::kill}, DiskFault{"ThatLosesPower", Fault::powerLoss});

std::string nameOf(const testing::TestParamInfo<DiskFault>& parameter)
{
    return parameter.param.name;
}

class StoreFaults : public testing::TestWithParam<DiskFault> { };

TEST_P(StoreFaults, KeepEveryChangeWholeOrNotAtAll)
{
    // An owner folds the log in when it ends; a guest leaves it for the next process to believe.
    std::vector roles{StoreRole::owner};
    if (GetParam().fault == Fault::inputOutputOnce)
        roles.push_back(StoreRole::guest);
    int points = 0;
    for (const auto& change : everyChange()) {
        for (const auto role : roles)
            points += expectWholeOrNothing(change, role, GetParam().fault);
    }
    RecordProperty("points", points);
    EXPECT_GT(points, static_cast<int>(everyChange().size()));
}

INSTANTIATE_TEST_SUITE_P(OnADisk, StoreFaults, everyFault, nameOf);

TEST(StoreCreationFaults, LeaveNothingBehindWhereAStoreCouldNotBeCreated)
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

TEST(StoreCreationFaults, SayThatTheDiskIsFull)
{
    const auto database = StoreDatabase::inMemory();
    execute(*database, "PRAGMA max_page_count = 1");
    const auto saved = PersistentActivitySegmentRepository(database).save(sampleSegments(0, 2000));
    ASSERT_FALSE(saved);
    EXPECT_EQ(message(saved.error()), "The disk that holds the store is full.");
}

/// Opens, which creates or migrates, under every fault at every write; the next open finds all that was there.
int expectOpeningSurvives(const std::function<void(const SampleStore&)>& prepare, Fault fault)
{
    const CapturedLog log;
    std::vector<std::string> after;
    {
        const SampleStore store;
        prepare(store);
        after = contents(*store.open());
    }
    FaultyFileSystem disk;
    for (int operation = 1; operation < 500; ++operation) {
        const testing::ScopedTrace point(__FILE__, __LINE__, operation);
        const SampleStore store;
        prepare(store);
        const auto attempt = [&] {
            disk.failFrom(operation, fault);
            return StoreDatabase::open({.file = store.file, .fileSystem = disk.name()}).has_value();
        };
        bool hasFailed = false;
        if (fault == Fault::kill) {
            hasFailed = answerBeforeKill(attempt) == Answer::none;
        } else {
            attempt();
            hasFailed = disk.hasFailed();
        }
        if (fault == Fault::powerLoss)
            disk.losePower(static_cast<unsigned>(operation));
        disk.recover();
        const auto database = store.open();
        if (database == nullptr)
            return 0;
        EXPECT_TRUE(isSound(*database));
        EXPECT_EQ(contents(*database), after);
        if (!hasFailed)
            return operation - 1;
    }
    ADD_FAILURE() << "the store was never opened";
    return 0;
}

class StoreOpeningFaults : public StoreFaults { };

TEST_P(StoreOpeningFaults, LeaveAStoreThatTheNextOpeningCreatesOrMigrates)
{
    int points = expectOpeningSurvives([](const SampleStore&) { }, GetParam().fault);
    for (const int version : {1, 8}) {
        const testing::ScopedTrace from(__FILE__, __LINE__, version);
        points += expectOpeningSurvives(
            [version](const SampleStore& store) {
                std::filesystem::copy_file(
                    fmt::format("{}/Tests/Fixtures/Stores/v{}.store", STINTBOOK_SOURCE_DIRECTORY, version),
                    store.file);
            },
            GetParam().fault);
    }
    RecordProperty("points", points);
    EXPECT_GT(points, 3 * 3);
}

INSTANTIATE_TEST_SUITE_P(OnADisk, StoreOpeningFaults, everyFault, nameOf);

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

TEST(StoreKills, CostNoSegmentThatWasAcknowledged)
{
    for (const std::uint32_t count : {1U, 2U, 7U, 30U, 150U}) {
        const SampleStore store;
        const auto acknowledged = acknowledgedBeforeKill(count, store);
        const auto database = store.open();
        EXPECT_TRUE(isSound(*database));
        const auto segments = *PersistentActivitySegmentRepository(database).segments(allTime);
        const auto stored = static_cast<std::uint32_t>(segments.size());
        EXPECT_EQ(segments, sampleSegments(0, stored));
        EXPECT_GE(stored, acknowledged);
        EXPECT_LE(stored, acknowledged + 1);
    }
}

} // namespace
} // namespace stintbook
