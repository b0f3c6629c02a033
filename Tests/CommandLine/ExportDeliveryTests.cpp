// An export is recorded exactly when it was delivered.

#include <csignal>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "CommandLineTest.h"

namespace stintbook {
namespace {

class ExportDelivery : public CommandLineTest {
protected:
    ExportDelivery()
    {
        recordDay();
        addAccount();
        done({"work", "ignore", day, workAt("10:00")});
        done({"day", "ready", day});
    }

    Words csv(Words more = {}) const
    {
        more.insert(more.begin(), {"export", "csv", "--from", day, "--to", day});
        return more;
    }
    unsigned recorded() { return json({"export", "history"})["snapshots"].Size(); }
};

TEST_F(ExportDelivery, IsRecordedForFilesAndForStandardOutput)
{
    const auto file = directory / "bill.csv";
    const auto printed = done(csv());
    EXPECT_EQ(recorded(), 1U);
    const auto receipt = json(csv({"--output", file}));
    EXPECT_EQ(contentsOf(file), printed);
    EXPECT_EQ(receipt["lineCount"].GetInt(), 2);
    done({"export", "summary", "--from", day, "--to", day});
    EXPECT_EQ(recorded(), 3U);
    const std::string id = receipt["snapshotID"].GetString();
    EXPECT_STREQ(json({"export", "show", id})["snapshots"][0]["id"].GetString(), id.c_str());
}

TEST_F(ExportDelivery, OfATimesheetIsWrittenAgainFromItsRecord)
{
    const Words timesheet{"export", "pdf", "--from", day, "--to", day};
    const auto with = [](Words words, const Words& more) {
        words.insert(words.end(), more.begin(), more.end());
        return words;
    };
    const auto file = directory / "timesheet.pdf";
    const auto receipt = json(with(timesheet, {"--output", file, "--paper", "usLetter"}));
    EXPECT_STREQ(receipt["format"].GetString(), "timesheet-pdf");
    EXPECT_EQ(receipt["lineCount"].GetInt(), 2);
    EXPECT_TRUE(contentsOf(file).starts_with("%PDF-"));

    const auto again = directory / "again.pdf";
    const Words show{"export", "show", receipt["snapshotID"].GetString()};
    const Words toFile{"--output", again};
    EXPECT_EQ(done(with(show, {"--output", again, "--paper", "usLetter"})), "");
    EXPECT_EQ(contentsOf(again), contentsOf(file));
    done(with(show, toFile));
    EXPECT_NE(contentsOf(again), contentsOf(file)) << "A4 is the paper of no particular region";
    environment["LC_ALL"] = "";
    environment["LC_PAPER"] = "en_US.UTF-8";
    done(with(show, toFile));
    EXPECT_EQ(contentsOf(again), contentsOf(file));
    EXPECT_EQ(recorded(), 1U);

    expectRefusal(with(show, {"--output", directory / "nowhere" / "timesheet.pdf"}),
                  "The export could not be saved: No such file or directory. Nothing was written, and no "
                  "record was created.");
}

TEST_F(ExportDelivery, ThatFailsIsNotRecordedAndLeavesNothingBehind)
{
    const auto expectUndelivered = [&](const std::string& file, const std::string& why) {
        expectRefusal(csv({"--output", file}),
                      "The export could not be saved: " + why
                          + ". Nothing was written, and no record was created.");
    };
    expectUndelivered(directory / "nowhere" / "bill.csv", "No such file or directory");
    const auto folder = directory / "folder.csv";
    std::filesystem::create_directory(folder);
    expectUndelivered(folder, "Is a directory");
    EXPECT_FALSE(std::filesystem::exists(folder.string() + ".new"));
    expectUndelivered("/dev/full", "No space left on device");
    EXPECT_EQ(recorded(), 0U);
}

TEST_F(ExportDelivery, NeedsAStandardOutputThatTakesIt)
{
    const auto onto = [](const char* file) {
        return [file] { dup2(open(file, O_WRONLY | O_CLOEXEC), STDOUT_FILENO); };
    };
    const auto closed = [] { close(STDOUT_FILENO); };
    const auto brokenPipe = [] {
        int ends[2];
        if (pipe(ends) != 0)
            _exit(126);
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        close(ends[1]);
        signal(SIGPIPE, SIG_IGN);
    };
    const std::string refused =
        "Standard output did not take it. Nothing was written, and no record was created.";
    expectRefusal(csv(), refused, onto("/dev/full"));
    expectRefusal(csv(), refused, closed);
    expectRefusal(csv(), refused, brokenPipe);
    EXPECT_EQ(run(csv(),
                  [=] {
                      brokenPipe();
                      signal(SIGPIPE, SIG_DFL);
                  })
                  .status,
              -SIGPIPE);
    EXPECT_EQ(recorded(), 0U);

    // The same holds for what only reads: an answer that is lost is no success.
    expectRefusal({"day", "show", day}, "Standard output did not take the answer.", onto("/dev/full"));
    expectRefusal({"client", "list"}, "Standard output did not take the answer.", closed);
}

} // namespace
} // namespace stintbook
