// Everything as one document, and back.

#include <csignal>
#include <fstream>

#include <fcntl.h>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <sched.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "CommandLineTest.h"

namespace stintbook {
namespace {

class DataCopies : public CommandLineTest {
protected:
    /// So many more minutes of work, long before the recorded day.
    void addHistory(int segmentCount) const
    {
        execute(fmt::format(
            "WITH RECURSIVE minute (n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM minute WHERE n < {})"
            " INSERT INTO ActivitySegment SELECT randomblob(16), n * 60.0, n * 60.0 + 59.5, 'work',"
            " NULL, 'org.example.Editor', 'Editor', 'windowTitle', 'A title of usual length, ' || n,"
            " 'applicationAndWindow', 'observed', 'UTC', 0 FROM minute",
            segmentCount));
    }
    std::string withoutInstant(std::string document) const
    {
        const auto at = document.find("\"exportedAt\"");
        return document.erase(at, document.find('\n', at) - at);
    }
    /// Nothing but the document, under its own name.
    std::map<std::string, std::string> copies() const { return filesIn(directory / "copies"); }

    /// Until the process has written so much, or is done.
    static void awaitWritten(pid_t process, std::size_t bytes)
    {
        const auto written = [&] {
            std::ifstream figures(fmt::format("/proc/{}/io", process));
            std::string name;
            std::size_t count = 0;
            while (figures >> name >> count && name != "wchar:")
                continue;
            return name == "wchar:" ? count : 0;
        };
        const auto isDone = [&] {
            siginfo_t information{};
            waitid(P_PID, static_cast<id_t>(process), &information, WEXITED | WNOHANG | WNOWAIT);
            return information.si_pid != 0;
        };
        while (written() < bytes && !isDone())
            sched_yield();
    }

    DataCopies()
    {
        std::filesystem::create_directory(directory / "copies");
        recordDay();
        addAccount();
        done({"work", "ignore", day, workAt("10:00")});
        done({"day", "ready", day});
        done({"export", "csv", "--from", day, "--to", day});
    }

    const std::string file = directory / "copies" / "data.json";
};

TEST_F(DataCopies, AreTheSameInAnotherStore)
{
    EXPECT_EQ(done({"data", "export", file}), "");
    const auto document = contentsOf(file);
    EXPECT_EQ(withoutInstant(done({"data", "export", "-"})), withoutInstant(document));
    // A file that is there is replaced.
    done({"data", "export", file});
    EXPECT_EQ(withoutInstant(contentsOf(file)), withoutInstant(document));
    EXPECT_EQ(copies().size(), 1U);
    const auto shown = done({"--json", "day", "show", day});

    const auto refused = run({"data", "import", file});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.errors,
              "The store holds something already, and an import needs an empty one. Nothing was imported.\n");
    EXPECT_EQ(withoutInstant(done({"data", "export", "-"})), withoutInstant(document));
    environment["STINTBOOK_STORE_DIRECTORY"] = directory / "another";
    EXPECT_EQ(
        done({"data", "import", file}),
        "Imported: 4 recorded segments, 2 reviewed items, 1 clients, 1 projects, 1 rules, 1 exports.\n");
    EXPECT_EQ(withoutInstant(done({"data", "export", "-"})), withoutInstant(document));
    EXPECT_EQ(done({"--json", "day", "show", day}), shown);
}

TEST_F(DataCopies, LeaveNothingOnAFullDisk)
{
    addHistory(5000);
    expectRefusal({"data", "export", file}, "The file could not be written. File too large", [] {
        // What has room for a megabyte stands for a disk that is full.
        const rlimit megabyte{1 << 20, 1 << 20};
        signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &megabyte);
    });
    EXPECT_TRUE(copies().empty());
    expectRefusal({"data", "export", "-"}, "The file could not be written. Standard output did not take it.",
                  [] { dup2(open("/dev/full", O_WRONLY | O_CLOEXEC), STDOUT_FILENO); });
    expectRefusal({"data", "export", directory / "nowhere" / "data.json"},
                  "The file could not be written. No such file or directory");
    expectRefusal({"data", "import", directory / "nowhere.json"},
                  "The file “" + (directory / "nowhere.json").string()
                      + "” could not be read, so nothing was imported.");
}

TEST_F(DataCopies, AreWholeOrNotThereWhenTheProcessIsKilledOrInterrupted)
{
    addHistory(60'000);
    done({"data", "export", file});
    const auto whole = withoutInstant(contentsOf(file));
    int unfinished = 0;
    for (const auto signal : {SIGKILL, SIGTERM, SIGINT}) {
        for (const int part : {0, 1, 20, 40, 60, 80, 99, 100}) {
            for (const bool isThere : {false, true}) {
                SCOPED_TRACE(fmt::format("signal {} after {} %", signal, part));
                std::filesystem::remove(file);
                if (isThere)
                    writeFile(file, "former");
                const auto process = start({"data", "export", file});
                awaitWritten(process.id, whole.size() * part / 100);
                kill(process.id, signal);
                const auto result = finish(process);
                auto left = copies();
                if (const auto copy = left.find("data.json");
                    copy != left.end() && copy->second != "former") {
                    EXPECT_TRUE(withoutInstant(copy->second) == whole);
                    continue;
                }
                ++unfinished;
                EXPECT_NE(result.status, 0);
                if (result.status == 1) {
                    EXPECT_EQ(result.errors, "The export was cancelled, so nothing was exported.\n");
                }
                EXPECT_EQ(left.size(), isThere ? 1U : 0U);
            }
        }
    }
    EXPECT_GT(unfinished, 20);
}

} // namespace
} // namespace stintbook
