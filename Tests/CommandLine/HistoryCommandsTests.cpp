#include <fmt/format.h>
#include <gmock/gmock.h>

#include "CommandLineTest.h"

namespace stintbook {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr int daySeconds = 24 * 3600;

} // namespace

/// Three days of November 2020 with an hour in an editor, and in it a title that no other day has.
class HistoryCommands : public CommandLineTest {
protected:
    HistoryCommands()
    {
        for (int number = 20; number < 23; ++number) {
            const int nine = 1605859200 + (number - 20) * daySeconds;
            const auto trace = directory / "day.jsonl";
            writeFile(trace,
                      fmt::format(R"({{"at":{0},"start":{{"timeZone":"Europe/Berlin"}}}}
{{"at":{0},"frontmost":{{"bundleIdentifier":"org.example.Editor","displayName":"Editor","windowTitle":"Plan of the {2}"}}}}
{{"at":{1},"stop":{{}}}}
)",
                                  nine, nine + 3600, number));
            done({"replay", trace});
        }
        addAccount();
    }

    /// The days whose titles stand somewhere in the store's files, in order.
    std::vector<int> kept()
    {
        std::string files;
        for (const auto& [name, contents] : stored())
            files += contents;
        std::vector<int> days{20, 21, 22};
        std::erase_if(days, [&](int day) { return !files.contains(fmt::format("Plan of the {}", day)); });
        return days;
    }
};

TEST_F(HistoryCommands, DeleteARangeOrEverythingOnceThatIsConfirmed)
{
    done({"day", "ready", "2020-11-21"});
    done({"export", "csv", "--from", "2020-11-21", "--to", "2020-11-21", "--output", directory / "old.csv"});
    expectRefusal(
        {"data", "delete", "--from", "2020-11-20", "--to", "2020-11-21"},
        "Delete selected history?\nThis action removes the selected history.\nSelected date range, 2 local "
        "calendar dates\nNothing was changed. Repeat the command with --yes to confirm.");
    expectRefusal(
        {"data", "delete", "--all"},
        "Delete all activity data?\nThis removes retained activity data from this computer.\nNothing was "
        "changed. Repeat the command with --yes to confirm.");
    EXPECT_THAT(kept(), ElementsAre(20, 21, 22));

    EXPECT_EQ(json({"data", "delete", "--from", "2020-11-20", "--to", "2020-11-21", "--yes"})["removedDays"]
                  .GetInt(),
              2);
    EXPECT_THAT(kept(), ElementsAre(22));
    EXPECT_EQ(json({"day", "list"})["days"].GetArray().Size(), 1U);
    EXPECT_EQ(json({"export", "history"})["snapshots"].GetArray().Size(), 1U);
    EXPECT_EQ(done({"data", "delete", "--all", "--yes"}), "All activity data was deleted.\n");
    EXPECT_THAT(kept(), IsEmpty());
    EXPECT_EQ(json({"client", "list"})["clients"].GetArray().Size(), 1U);
}

TEST_F(HistoryCommands, KeepWhatWasReviewedWhenOlderActivityIsRemoved)
{
    done({"day", "ready", "2020-11-20"});
    const auto before = json({"export", "preview", "--from", "2020-11-20", "--to", "2020-11-20"});
    expectRefusal(
        {"data", "retention", "1"},
        "Remove activity older than 1 day\nThis removes observed activity from 20 Nov 2020 – 22 Nov 2020 — 3 "
        "local calendar dates. Reviewed work, day approvals and exported records are not affected.\nNothing "
        "was changed. Repeat the command with --yes to confirm.");
    EXPECT_THAT(done({"preferences", "list"}), HasSubstr("stintbook.privacy.retentionDays     forever"));
    EXPECT_EQ(done({"data", "retention", "100000"}), "Observed activity is kept for 100000 days.\n");
    EXPECT_EQ(done({"data", "cleanup"}), "Removed 0 days of observed activity.\n");
    EXPECT_THAT(kept(), ElementsAre(20, 21, 22));

    EXPECT_EQ(done({"data", "retention", "1", "--yes"}),
              "Observed activity is kept for 1 day. Removed 3 days of observed activity.\n");
    EXPECT_THAT(done({"preferences", "list"}), HasSubstr("stintbook.privacy.retentionDays     1"));
    EXPECT_THAT(kept(), IsEmpty());
    EXPECT_THAT(done({"day", "show", "2020-11-20"}),
                HasSubstr("* Activity details were removed by Keep history.\n"));
    const auto day = json({"day", "show", "2020-11-20"});
    EXPECT_EQ(day["itemsWithoutDetails"].GetArray().Size(), 1U);
    EXPECT_STREQ(day["status"].GetString(), "ready");
    EXPECT_TRUE(json({"export", "preview", "--from", "2020-11-20", "--to", "2020-11-20"}) == before);

    EXPECT_EQ(done({"data", "retention", "forever"}), "Observed activity is kept until it is deleted.\n");
    EXPECT_EQ(done({"data", "cleanup"}),
              "Observed activity is kept until it is deleted, so nothing was removed.\n");
}

TEST_F(HistoryCommands, SayWhatIsGoneWhereTheChoiceItselfCouldNotBeSaved)
{
    const auto occupied = directory / "occupied";
    writeFile(occupied, "");
    environment["XDG_CONFIG_HOME"] = occupied;
    const auto result = run({"data", "retention", "1", "--yes"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors,
                HasSubstr("Removed 3 days of observed activity, but the preferences could not be saved, so "
                          "Keep history was not changed."));
    EXPECT_THAT(kept(), IsEmpty());
}

TEST_F(HistoryCommands, CleanUpWhatAKilledRecorderLeftBehindToo)
{
    writeFile(
        storeFile().string() + ".unsaved",
        R"([{"context":{"kind":"windowTitle","text":"Unsaved plan"},"end":1605870000,"evidence":)"
        R"("applicationAndWindow","id":"01234567-89AB-7DEF-8123-456789ABCDEF","kind":"work","origin":"observed",)"
        R"("start":1605869000,"timeZoneIdentifier":"Europe/Berlin","timeZoneSecondsFromGMT":3600}])");
    done({"preferences", "set", "stintbook.privacy.retentionDays", "1"});
    const auto result = run({"data", "cleanup"});
    EXPECT_EQ(result.output, "Removed 3 days of observed activity.\n");
    EXPECT_THAT(result.errors, HasSubstr("Retention cleanup removed 3 day(s)"));
    for (const auto& [name, contents] : stored())
        EXPECT_THAT(contents, Not(HasSubstr("Unsaved plan"))) << name;
    EXPECT_FALSE(std::filesystem::exists(storeFile().string() + ".unsaved"));
}

TEST_F(HistoryCommands, RefuseWhatIsNoRangeAndNoNumberOfDays)
{
    const auto choose = "Choose a date range first, with --from and --to, or --all.";
    expectWrongUsage({"data", "delete", "--yes"}, choose);
    expectWrongUsage({"data", "delete", "--from", "2020-11-20", "--yes"}, choose);
    expectWrongUsage({"data", "delete", "--all", "--to", "2020-11-20", "--yes"}, choose);
    expectWrongUsage({"data", "delete", "--from", "2020-11-21", "--to", "2020-11-20", "--yes"},
                     "The last day comes before the first one.");
    for (const auto* number : {"0", "30 days", "3.5", "99999999999999999999", ""})
        expectWrongUsage({"data", "retention", number},
                         fmt::format("'{}' is no number of days, and not 'forever'.", number));
    EXPECT_THAT(kept(), ElementsAre(20, 21, 22));
}

TEST_F(HistoryCommands, SayWhatTheyDoNotKnowOfAStoreThatCannotBeRead)
{
    writeFile(storeFile(), "no store at all");
    expectRefusal(
        {"data", "retention", "30"},
        "Keep history was not changed: the activity store could not be read, so what the change would remove "
        "is unknown. Choose again once the store is answering.");
    const auto result = run({"data", "delete", "--all", "--yes"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("The local store is unavailable, so nothing was deleted."));
}

} // namespace stintbook
