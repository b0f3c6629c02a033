// What a store holds after its disk failed, its machine lost power or its process was killed, at every single
// write of everything that is ever written.

#include <algorithm>
#include <csignal>
#include <functional>
#include <ostream>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "ActivityDataCopies.h"
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
    /// What it finds.
    std::string document = documentOfEverything();
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
                        .deletions = {numbered<ReviewedItemID>(0xE1)},
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
        review(
            "a project is made",
            [](auto& store) { return store.saveProject({numbered<ProjectID>(6), sampleClient, "Website"}); }),
        review("a first client comes with its project",
               [](auto& store) {
                   const auto client = numbered<ClientID>(7);
                   return store.create({{client, "Birch"},
                                        {numbered<ProjectID>(7), client, "Garden"},
                                        ClientBillingDefaults{Decimal(80), {}}});
               }),
        review("rules are replaced",
               [](auto& store) {
                   std::vector<AttributionRule> rules(30);
                   for (std::uint32_t place = 0; auto& rule : rules)
                       rule = {.id = numbered<RuleID>(++place),
                               .match = {"a", BrowserDomain::fromText("example.net"), "t"},
                               .clientID = sampleClient,
                               .projectID = sampleProject};
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
        {"a copy is imported",
         [](const auto& database) { return imported(*database, documentOfEverything()).empty(); }, ""},
    };
    return changes;
}

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

using Attempt =
    std::function<bool(const SampleStore&, const std::string& disk, const std::function<void()>& fail)>;

/// Attempts it in a prepared store with the disk failing from each of its writes on, until it meets no failure, and
/// has a look at what the next opening finds; answers how many writes those were.
int failAtEveryWrite(Fault fault, const std::function<void(const SampleStore&)>& prepare,
                     const Attempt& attempt,
                     const std::function<void(const std::shared_ptr<StoreDatabase>&, Answer)>& look)
{
    FaultyFileSystem disk;
    for (int operation = 1; operation < 500; ++operation) {
        const testing::ScopedTrace point(__FILE__, __LINE__, operation);
        const SampleStore store;
        prepare(store);
        const auto isAccepted = [&] {
            return attempt(store, disk.name(), [&] { disk.failFrom(operation, fault); });
        };
        auto answer = Answer::none;
        if (fault == Fault::kill)
            answer = answerBeforeKill(isAccepted);
        else
            answer = isAccepted() ? Answer::accepted : Answer::refused;
        const bool hasFailed = fault == Fault::kill ? answer == Answer::none : disk.hasFailed();
        if (fault == Fault::powerLoss)
            disk.losePower(static_cast<unsigned>(operation));
        disk.recover();

        const auto database = store.open();
        if (database == nullptr)
            return 0;
        EXPECT_TRUE(isSound(*database));
        look(database, answer);
        if (!hasFailed)
            return operation - 1;
    }
    ADD_FAILURE() << "it never went through";
    return 0;
}

int expectWholeOrNothing(const Change& change, StoreRole role, Fault fault)
{
    const testing::ScopedTrace name(__FILE__, __LINE__, change.name);
    std::vector<std::string> before;
    std::vector<std::string> after;
    std::string file;
    {
        const SampleStore store;
        if (!change.document.empty()) {
            EXPECT_EQ(imported(*store.open(), change.document), "");
        }
        before = storedRows(*store.open());
        file = contentsOf(store.file);
        const auto database = store.open();
        EXPECT_TRUE(change.make(database));
        after = storedRows(*database);
        EXPECT_NE(after, before);
    }
    return failAtEveryWrite(
        fault, [&](const SampleStore& store) { writeFile(store.file, file); },
        [&](const SampleStore& store, const std::string& disk, const std::function<void()>& fail) {
            const auto database = store.open(role, disk);
            fail();
            const bool isAccepted = change.make(database);
            // In this process nothing may be seen of what was refused.
            EXPECT_EQ(storedRows(*database), isAccepted ? after : before);
            return isAccepted;
        },
        [&](const auto& database, Answer answer) {
            const auto found = storedRows(*database);
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
                EXPECT_EQ(storedRows(*database), after);
            }
        });
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

TEST(FullStore, SaysThatItsDiskIsFull)
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
        after = storedRows(*store.open());
    }
    return failAtEveryWrite(
        fault, prepare,
        [&](const SampleStore& store, const std::string& disk, const std::function<void()>& fail) {
            const bool isNew = !std::filesystem::exists(store.file);
            fail();
            const auto opened = StoreDatabase::open({.file = store.file, .fileSystem = disk});
            if (!opened && isNew && fault == Fault::diskFull) {
                EXPECT_TRUE(message(opened.error()).contains("the disk is full")) << message(opened.error());
                EXPECT_TRUE(filesIn(store.directory.path()).empty());
            }
            return opened.has_value();
        },
        [&](const auto& database, Answer) { EXPECT_EQ(storedRows(*database), after); });
}

class StoreOpeningFaults : public StoreFaults { };

TEST_P(StoreOpeningFaults, LeaveAStoreThatTheNextOpeningCreatesOrMigrates)
{
    int points = expectOpeningSurvives([](const SampleStore&) { }, GetParam().fault);
    for (const int version : {1, 8}) {
        const testing::ScopedTrace from(__FILE__, __LINE__, version);
        points += expectOpeningSurvives(
            [version](const SampleStore& store) { std::filesystem::copy_file(fixture(version), store.file); },
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
