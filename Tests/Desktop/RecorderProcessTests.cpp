#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <SQLiteCpp/Database.h>
#include <gmock/gmock.h>

#include "RecordingTest.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {

namespace {

using testing::HasSubstr;

/// The number behind a key in a file of /proc.
long procNumber(const std::filesystem::path& file, const std::string& key)
{
    const auto contents = contentsOf(file);
    const auto found = contents.find("\n" + key + ":");
    return found == contents.npos ? 0 : std::stol(contents.substr(found + key.size() + 2));
}

/// How often the threads of a process waited for something and were woken.
long wakeUps(pid_t process)
{
    long count = 0;
    for (const auto& thread :
         std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task"))
        count += procNumber(thread.path() / "status", "voluntary_ctxt_switches");
    return count;
}

/// A recorder on a desktop with a terminal.
class RecorderProcess : public RecordingTest {
protected:
    RecorderProcess() { startTerminal("first"); }

    /// Until its end no other process can write to the store.
    SQLite::Database blockedStore()
    {
        SQLite::Database database(status()["storeFile"].GetString(), SQLite::OPEN_READWRITE);
        database.exec("BEGIN EXCLUSIVE");
        return database;
    }
    void driveTitles(const std::vector<std::string>& titles)
    {
        for (const auto& title : titles) {
            const auto from = now();
            setTitle(title);
            EXPECT_TRUE(opensSegment("work", from)) << title;
        }
    }
    /// What the store holds after another recorder has run for a moment.
    std::vector<StoredStretch> storedByTheNext()
    {
        const auto next = record();
        EXPECT_EQ(terminate(next).exitStatus, 0) << log(next);
        return stretches(store);
    }
};

} // namespace

TEST_F(RecorderProcess, KeepsASecondOneFromItsStoreWhichAsksItToComeForward)
{
    const auto first = record();
    const auto second = launch();
    EXPECT_EQ(waitForEnd(second).exitStatus, 1);
    EXPECT_THAT(contentsOf(second.output), HasSubstr(std::to_string(first.process)));
    EXPECT_THAT(log(second), HasSubstr("A second launch found the store already held and handed over to it"));
    EXPECT_TRUE(PrivateDesktop::eventually([&] {
        return log(first).find("Another launch asked this copy to come forward") != std::string::npos;
    })) << log(first);
    EXPECT_EQ(status()["processIdentifier"].GetInt(), first.process);
    EXPECT_EQ(terminate(first).exitStatus, 0);
}

TEST_F(RecorderProcess, RestsWhileNothingHappensAndLosesAtMostFifteenSecondsWhenItIsKilled)
{
    const auto killed = record();
    const auto settled = now() + Seconds{3};
    ASSERT_TRUE(PrivateDesktop::eventually([&] { return now() > settled; }));
    const auto before = wakeUps(killed.process);
    const Seconds length{16};
    const auto measured = now() + length;
    ASSERT_TRUE(PrivateDesktop::eventually([&] { return now() > measured; }, length * 2));
    const auto woken = wakeUps(killed.process) - before;
    const auto kilobytes = procNumber("/proc/" + std::to_string(killed.process) + "/status", "VmRSS");
    RecordProperty("WakeUps", std::to_string(woken));
    RecordProperty("ResidentKilobytes", std::to_string(kilobytes));
    EXPECT_LT(woken, length.value);
    EXPECT_LT(kilobytes, 20'000);

    const auto killedAt = now();
    desktop.kill(killed.process);
    const auto stored = storedByTheNext();
    ASSERT_EQ(stored.size(), 2u);
    EXPECT_EQ(stored[0].what, stored[1].what);
    EXPECT_GE(stored[0].end, killedAt - Seconds{15 + 1});
    EXPECT_LE(stored[0].end, stored[1].start);
}

TEST_F(RecorderProcess, LosesNothingThatTheStoreHasNotTakenWhetherItIsKilledOrAskedToEnd)
{
    for (const bool isKilled : {true, false}) {
        store = desktop.home() / (isKilled ? "killed" : "ended");
        setTitle("first");
        frontTitled("first");
        const auto recorder = record();
        Instant asked;
        {
            const auto blocked = blockedStore();
            driveTitles({"second", "third", "fourth"});
            EXPECT_EQ(status()["unsaved"].GetInt(), 3);
            asked = now();
            if (isKilled) {
                desktop.kill(recorder.process);
            } else {
                const auto ended = terminate(recorder);
                EXPECT_EQ(ended.exitStatus, 1);
                // The store's patience of two seconds may begin just before the deadline of three.
                EXPECT_LE(ended.took, Seconds{3 + 2 + 1});
            }
        }
        auto stored = storedByTheNext();
        ASSERT_GE(stored.size(), isKilled ? 4u : 5u);
        EXPECT_EQ(stored.back().what, "work debian-xterm “fourth”");
        // Of the open segment a kill costs what was not yet kept.
        stored.resize(isKilled ? 3 : 4);
        auto expected = std::vector<std::string>{"work debian-xterm “first”", "work debian-xterm “second”",
                                                 "work debian-xterm “third”", "work debian-xterm “fourth”"};
        expected.resize(stored.size());
        EXPECT_EQ(whats(stored), expected);
        expectTouching(stored);
        if (!isKilled) {
            EXPECT_GE(stored.back().end, asked);
        }
    }
}

} // namespace stintbook
