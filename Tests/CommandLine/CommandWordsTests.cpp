// How words on a command line become a command, and what is said of those that do not.

#include <gmock/gmock.h>

#include "CommandLineTest.h"

namespace stintbook {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

using CommandWords = CommandLineTest;

TEST_F(CommandWords, ThatMakeNoCommandEndWithTheUsageLine)
{
    const std::string id(36, '1');
    EXPECT_EQ(run({"client", "add"}).errors,
              "NAME is required\nUsage: velloran-cli client add NAME [OPTION…]\n");
    EXPECT_EQ(run({"work", "split", day, id}).errors,
              "--at is required\nUsage: velloran-cli work split DAY ID --at TIME [OPTION…]\n");
    expectWrongUsage({}, "A subcommand is required");
    expectWrongUsage({"invoice"}, "There is no command 'invoice'.");
    expectWrongUsage({"client", "lsit"}, "There is no command 'lsit'.");
    expectWrongUsage({"client", "list", "more"}, "The following argument was not expected: more");
    expectWrongUsage({"client", "list", "--all"}, "The following argument was not expected: --all");
    expectWrongUsage({"client", "add", "B", "--rounding", "sometimes"},
                     "--rounding: 'sometimes' is none of exact, nearest-6m, up-to-next-6m, nearest-15m, "
                     "up-to-next-15m, none");
    for (const std::string wrong : {"2026-02-30", "20-11-2026", "tomorrow", "2026-11-20 "})
        expectWrongUsage({"day", "ready", wrong},
                         "'" + wrong + "' is no day; write yyyy-MM-dd, today or yesterday.");
    expectWrongUsage({"day", "show", "2026-11-20@Mars/Base"}, "'2026-11-20@Mars/Base' is no day.");
    for (const std::string wrong : {"24:01", "9:00", "09:60", "09:00:60", "-1:00", "09-00", "noon"})
        expectWrongUsage({"work", "split", day, id, "--at", wrong},
                         "'" + wrong + "' is no time; write HH:mm or HH:mm:ss.");
    for (const std::string wrong : {"0", "-1", "1.5", "first", "99999999999"})
        expectWrongUsage({"rule", "move", id, "--to", wrong},
                         "'" + wrong + "' is no position; write a whole number from 1.");
    for (const std::string wrong : {"0", "367", "month"})
        expectWrongUsage({"rule", "preview", "--days", wrong},
                         "'" + wrong + "' is no number of days; write a whole number from 1 to 366.");
    expectWrongUsage({"rule", "suggest", "today", id, "--client", "Acme"},
                     "--client and --project go together.");
    for (const std::string wrong : {"0", "-5", "nan", "inf", "5s"})
        expectWrongUsage({"record", "--for", wrong}, "'" + wrong + "' is no number of seconds.");
    expectWrongUsage({"--time-zone", "Mars/Base", "day", "list"},
                     "'Mars/Base' is no time zone that this system knows.");
    expectWrongUsage({"--json", "export", "csv", "--from", day, "--to", day},
                     "--json prints the receipt, so the CSV needs --output.");
    expectWrongUsage({"pause", "2h"}, "LENGTH: '2h' is none of 15m, 1h, tomorrow, until-resume");
    expectWrongUsage({"project", "billable", "P", "perhaps"}, "yes|no: 'perhaps' is none of yes, no");
    expectWrongUsage({"client", "add", "Nord\xFFlicht"}, "An argument is no UTF-8 text.");
    EXPECT_EQ(run({"--store"}).status, 2);
}

TEST_F(CommandWords, MayNameGlobalOptionsBeforeAndAfterAndWithAnEqualsSign)
{
    const auto elsewhere = (directory / "elsewhere").string();
    done({"--store=" + elsewhere, "client", "add", "Acme"});
    EXPECT_EQ(json({"client", "list", "--store", elsewhere})["clients"].Size(), 1U);
    EXPECT_EQ(json({"--store", storeDirectory, "client", "--store=" + elsewhere, "list"})["clients"].Size(),
              1U);
    EXPECT_FALSE(std::filesystem::exists(storeDirectory));

    recordDay();
    const auto days = json({"day", "list", "--time-zone=Asia/Tokyo"});
    EXPECT_STREQ(days["days"][0]["dayID"].GetString(), "2026-11-20@Asia/Tokyo");
    // A whole dayID brings its zone along.
    EXPECT_EQ(json({"--time-zone", "Asia/Tokyo", "segments", day})["segments"].Size(), 4U);
}

TEST_F(CommandWords, AreValuesBehindAnEqualsSignAndNamesAfterTwoDashes)
{
    done({"client", "add", "--", "--json"});
    done({"client", "add", "--rate=12", "--", "-5"});
    done({"client", "rename", "--", "--json", "--version"});
    const auto clients = json({"client", "list"});
    EXPECT_STREQ(clients["clients"][0]["name"].GetString(), "--version");
    EXPECT_STREQ(clients["clients"][1]["name"].GetString(), "-5");
    EXPECT_EQ(clients["clients"][1]["hourlyRate"].GetInt(), 12);

    done({"project", "add", "--", "--version", "--json"});
    for (const auto* title : {"--title=-x", "--title=--title=", "--title=a=b"})
        done({"rule", "add", "--client=--version", "--project=--version/--json", title});
    const auto rules = done({"--json", "rule", "list"});
    for (const auto* title : {R"("-x")", R"("--title=")", R"("a=b")"})
        EXPECT_THAT(rules, HasSubstr(std::string(R"("titleContains":)") + title));
}

TEST_F(CommandWords, AskForHelpAnywhereWithoutAStore)
{
    EXPECT_THAT(done({"--version"}), StartsWith("velloran-cli "));
    const auto overview = done({"--help"});
    EXPECT_EQ(done({"help"}), overview);
    for (const auto* noun : {"record", "replay", "day", "work", "client", "rule", "export", "store"})
        EXPECT_THAT(overview, HasSubstr(std::string("\n  ") + noun));
    EXPECT_EQ(done({"help", "client"}), done({"client", "--help"}));
    EXPECT_EQ(done({"help", "client", "add"}), done({"client", "add", "--help", "--json"}));
    EXPECT_THAT(done({"help", "client", "add"}), HasSubstr("Usage: velloran-cli client add"));
    expectWrongUsage({"help", "invoice"}, "There is no command 'invoice'.");
    EXPECT_FALSE(std::filesystem::exists(storeDirectory));
}

} // namespace
} // namespace stintbook
