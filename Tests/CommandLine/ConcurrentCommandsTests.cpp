// Several copies of the program at one store at a time, and one that is killed.

#include <algorithm>
#include <csignal>
#include <fstream>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "CommandLineTest.h"

namespace stintbook {
namespace {

class ConcurrentCommands : public CommandLineTest {
protected:
    std::vector<Result> together(const std::vector<Words>& commands)
    {
        std::vector<Process> processes;
        for (const auto& words : commands)
            processes.push_back(start(words));
        std::vector<Result> results;
        for (const auto& process : processes)
            results.push_back(finish(process));
        return results;
    }

    /// A replay that reads its trace as it is written: it ends with `trace`, not before.
    struct RunningReplay {
        Process process;
        std::ofstream trace;
    };

    RunningReplay startReplay()
    {
        const auto pipe = directory / "trace";
        mkfifo(pipe.c_str(), 0600);
        RunningReplay replay{start({"replay", pipe}), std::ofstream(pipe)};
        replay.trace << R"({"at":0,"start":{"timeZone":"Europe/Berlin"}})" << '\n';
        return replay;
    }

    /// One switch a second from `first` on, so many that the replay has certainly read the one before
    /// the last thousand when this returns: a pipe holds less.
    static void writeSwitches(RunningReplay& replay, int first, int count)
    {
        for (int second = first; second < first + count; ++second)
            replay.trace << fmt::format(
                R"({{"at":{},"frontmost":{{"bundleIdentifier":"org.example.App{}","displayName":"Application"}}}})",
                second, second % 2)
                         << '\n';
        replay.trace.flush();
    }
};

TEST_F(ConcurrentCommands, AddOneClientEachAlsoToAStoreThatIsNotThereYet)
{
    for (int round = 1; round <= 2; ++round) {
        for (const auto& result :
             together(std::vector<Words>(20, {"client", "add", "Acme", "--rate", "9"}))) {
            EXPECT_EQ(result.status, 0) << result.errors;
            EXPECT_EQ(result.output.size(), 37U);
        }
        EXPECT_EQ(json({"client", "list"})["clients"].Size(), 20U * round);
    }
    const auto rule = Words{"rule", "add", "--client", "One", "--project", "Work", "--title", "t"};
    done({"client", "add", "One"});
    done({"project", "add", "One", "Work"});
    for (const auto& result : together(std::vector<Words>(12, rule)))
        EXPECT_EQ(result.status, 0) << result.errors;
    const auto rules = json({"rule", "list"});
    EXPECT_EQ(rules["attributionRules"].Size(), 12U);
    for (auto place = 0U; place < 12; ++place)
        EXPECT_EQ(rules["attributionRules"][place]["priority"].GetUint(), place);
}

TEST_F(ConcurrentCommands, NeverReviewTheSameTimeTwice)
{
    recordDay();
    addAccount();
    const auto block = workAt("09:00");
    std::vector<Words> edits(6, {"work", "freeze", day, block});
    edits.insert(edits.end(), 6, {"work", "split", day, block, "--at", "09:20"});
    edits.insert(
        edits.end(), 6,
        {"work", "add", day, "--from", "13:00", "--to", "14:00", "--client", "Acme", "--project", "Website"});
    int succeeded = 0;
    for (const auto& result : together(edits)) {
        EXPECT_EQ(result.output.empty(), result.status == 1) << result.errors;
        succeeded += result.status == 0 ? 1 : 0;
    }
    EXPECT_GE(succeeded, 2);

    const auto shown = json({"day", "show", day});
    std::vector<std::pair<double, double>> times;
    for (const auto& item : shown["items"].GetArray())
        times.emplace_back(item["start"].GetDouble(), item["end"].GetDouble());
    std::ranges::sort(times);
    for (std::size_t next = 1; next < times.size(); ++next)
        EXPECT_LE(times[next - 1].second, times[next].first);
    EXPECT_EQ(std::ranges::count(times, std::pair(1795176000.0, 1795179600.0)), 1);
    for (const auto& blocker : shown["blockers"].GetArray())
        EXPECT_STRNE(blocker.GetString(), "overlappingReviewedWork");
}

TEST_F(ConcurrentCommands, EditAndReadWhileAReplayHoldsTheStoreThatAnotherReplayIsRefused)
{
    auto replay = startReplay();
    writeSwitches(replay, 0, 25'000);
    const auto other = directory / "other";
    writeFile(other, "");
    for (const Words& words : std::vector<Words>{{"replay", other}, {"data", "import", other}}) {
        const auto refused = run(words);
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(
            refused.errors,
            fmt::format("Another copy of Velloran (process {}) is using this store.\n", replay.process.id));
    }

    for (const auto& result : together(std::vector<Words>(10, {"client", "add", "Acme"})))
        EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(json({"client", "list"})["clients"].Size(), 10U);
    EXPECT_GT(json({"segments", "1970-01-01"})["segments"].Size(), 0U);

    replay.trace.close();
    const auto first = finish(replay.process);
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(first.output, "Replayed: 24999 saved, 0 unsaved (persisted).\n");
    EXPECT_EQ(json({"segments", "1970-01-01"})["segments"].Size(), 24'999U);
    EXPECT_EQ(json({"client", "list"})["clients"].Size(), 10U);
}

TEST_F(ConcurrentCommands, KilledInAReplayLeavesItsBeginningWhole)
{
    auto replay = startReplay();
    writeSwitches(replay, 0, 45'000);
    kill(replay.process.id, SIGKILL);
    EXPECT_EQ(finish(replay.process).status, -SIGKILL);

    const auto kept = json({"segments", "1970-01-01"});
    ASSERT_GT(kept["segments"].Size(), 20'000U);
    for (auto place = 0U; place < kept["segments"].Size(); ++place) {
        ASSERT_EQ(kept["segments"][place]["start"].GetDouble(), place);
        ASSERT_EQ(kept["segments"][place]["end"].GetDouble(), place + 1);
    }
    // The lock died with its holder.
    recordDay();
}

} // namespace
} // namespace stintbook
