// What each command prints: one JSON document of its shape, or a table for people.

#include <fstream>

#include <gmock/gmock.h>

#include "CommandLineTest.h"

namespace stintbook {
namespace {

using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;

std::vector<std::string> keys(const rapidjson::Value& object)
{
    std::vector<std::string> names;
    for (const auto& member : object.GetObject())
        names.emplace_back(member.name.GetString());
    return names;
}

class CommandOutput : public CommandLineTest {
protected:
    /// Runs a command both ways; the document has just these keys, and people are shown no JSON.
    rapidjson::Document expectShape(const Words& words, const std::vector<std::string>& expected)
    {
        auto document = json(words);
        EXPECT_EQ(keys(document), expected) << testing::PrintToString(words);
        EXPECT_FALSE(done(words).starts_with("{")) << testing::PrintToString(words);
        return document;
    }
};

TEST_F(CommandOutput, ListsReplayedSegmentsByStartAlsoWhereTheClockWasSetBack)
{
    const auto trace = directory / "set-back.jsonl";
    std::ofstream(trace) << R"({"at":7000,"start":{"timeZone":"UTC"}}
{"at":7000,"frontmost":{"bundleIdentifier":"e","displayName":"E","processIdentifier":1}}
{"at":3600,"clockSet":{"from":7200}}
{"at":4000,"stop":{}}
)";
    const auto replayed = json({"replay", trace});
    EXPECT_EQ(keys(replayed), (Words{"outcome", "saved", "segments", "unsaved"}));
    const auto stored = json({"segments", "1970-01-01"});
    ASSERT_EQ(replayed["segments"].Size(), 2U);
    EXPECT_EQ(replayed["segments"][0]["start"].GetDouble(), 3600);
    EXPECT_TRUE(replayed["segments"] == stored["segments"]);
}

TEST_F(CommandOutput, HasItsShapeForEveryListAndDay)
{
    const std::vector<std::string> dayKeys{"dayID",        "dayStart",           "gapDuration",
                                           "idleDuration", "recordsState",       "reducedContextSegmentCount",
                                           "state",        "timeZoneIdentifier", "unreviewedDuration",
                                           "workDuration", "workSegmentCount"};
    recordDay();
    addAccount();
    done({"exclude", "add", "--domain", "news.example.org"});
    done({"billing", "currency", "EUR"});
    done({"client", "rounding", "Acme", "nearest-6m"});

    EXPECT_EQ(expectShape({"segments", day}, {"segments"})["segments"].Size(), 4U);
    const auto days = expectShape({"day", "list"}, {"days"});
    EXPECT_EQ(keys(days["days"][0]), dayKeys);
    const auto shown = expectShape({"day", "show", day},
                                   {"blockers", "blocks", "day", "items", "itemsWithoutDetails", "lines",
                                    "revision", "status", "summary", "totals"});
    EXPECT_EQ(keys(shown["day"]), dayKeys);
    EXPECT_THAT(keys(shown["blocks"][0]),
                ElementsAre("application", "assignment", "attribution", "end", "id",
                            "reducedContextSegmentCount", "review", "segmentIDs", "start"));
    EXPECT_STREQ(shown["blockers"][0].GetString(), "unassignedWork");

    const auto clients = expectShape({"client", "list"}, {"clients"});
    EXPECT_THAT(keys(clients["clients"][0]),
                ElementsAre("hourlyRate", "id", "isArchived", "name", "references", "rounding"));
    const auto projects = expectShape({"project", "list"}, {"projects"});
    EXPECT_THAT(keys(projects["projects"][0]),
                ElementsAre("clientID", "defaultBillable", "id", "isArchived", "name", "references"));
    const auto rules = expectShape({"rule", "list"}, {"attributionRules", "exclusionRules"});
    EXPECT_TRUE(rules["attributionRules"][0].HasMember("losesConflict"));
    const auto preview = expectShape({"rule", "preview", "--days", "366"}, {"rules", "windowDays"});
    EXPECT_THAT(keys(preview["rules"][0]), ElementsAre("applies", "id", "shadowed"));
    EXPECT_EQ(json({"rule", "preview"})["windowDays"].GetInt(), 30);
    expectShape({"rule", "conflicts"}, {"conflicts"});
    const auto suggested = expectShape({"rule", "suggest", day, workAt("09:00")}, {"suggestion"});
    EXPECT_THAT(keys(suggested["suggestion"]), ElementsAre("blockCount", "clientID", "match", "projectID"));
    expectShape({"exclude", "list"}, {"exclusionRules"});
    expectShape({"billing", "show"}, {"currencyCode"});
    expectShape({"store", "info"},
                {"counts", "fileSize", "logSize", "path", "recordedFrom", "recordedTo", "schemaVersion"});
    expectShape({"store", "check"}, {"problems", "isSound"});
    expectShape({"export", "history"}, {"snapshots"});
    EXPECT_THAT(keys(json({"export", "preview", "--from", day, "--to", day})),
                ElementsAre("blockedDays", "currencyCode", "days", "lines", "summaryRows", "totals",
                            "unreviewedDuration"));
}

TEST_F(CommandOutput, OfAnEmptyStoreIsEmptyToo)
{
    EXPECT_TRUE(json({"day", "list"})["days"].Empty());
    EXPECT_EQ(keys(json({"billing", "show"})), std::vector<std::string>{});
    EXPECT_STREQ(json({"replay", "/dev/null"})["outcome"].GetString(), "notRunning");
    EXPECT_STREQ(json({"status"})["runtime"].GetString(), "stopped");
}

TEST_F(CommandOutput, OfEveryEditIsOneDocument)
{
    recordDay();
    addAccount();
    const auto mail = workAt("10:00");
    const auto both = [&](const char* verb) { return Words{"work", verb, day, mail}; };
    Words assign = both("assign");
    assign.insert(assign.end(), {"--client", "Acme", "--project", "Website"});
    EXPECT_THAT(keys(json(assign)), ElementsAre("blocks", "items"));
    for (const auto* verb : {"confirm", "ignore"})
        EXPECT_THAT(keys(json(both(verb))), ElementsAre("blocks", "items")) << verb;
    EXPECT_THAT(keys(json({"work", "restore", day, workAt("10:00")})), ElementsAre("blocks", "items"));
    const auto split = json({"work", "split", day, workAt("09:00"), "--at", "09:30"});
    EXPECT_EQ(split["items"].Size(), 2U);
    const std::string first = split["items"][0]["id"].GetString();
    const std::string second = split["items"][1]["id"].GetString();
    EXPECT_EQ(json({"work", "merge", day, first, second})["items"].Size(), 1U);
    EXPECT_THAT(keys(json({"work", "describe", day, workAt("09:00"), "Plan"})), ElementsAre("items"));
    EXPECT_THAT(keys(json({"work", "add", day, "--from", "14:00", "--to", "15:00", "--client", "Acme",
                           "--project", "Website"})),
                ElementsAre("items"));
    const auto segments = json({"segments", day});
    EXPECT_THAT(keys(json({"work", "convert-idle", day, segments["segments"][2]["id"].GetString(), "--client",
                           "Acme", "--project", "Acme/Website"})),
                ElementsAre("items"));
    EXPECT_THAT(keys(json({"work", "freeze", day, workAt("11:30")})), ElementsAre("items"));
    EXPECT_THAT(keys(json({"day", "ready", day})), ElementsAre("approvedAt", "revision"));
    EXPECT_STREQ(json({"day", "show", day})["status"].GetString(), "ready");

    const auto rule = json({"rule", "list"})["attributionRules"][0]["id"].GetString() + std::string();
    const auto copy = added({"rule", "copy", rule});
    done({"rule", "move", copy, "--to", "1"});
    EXPECT_EQ(json({"rule", "list"})["attributionRules"][0]["id"].GetString(), copy);
    const auto exclusion = added({"exclude", "add", "--title", "private"});
    const auto client = added({"client", "add", "Birch", "--color", "#ffcc00", "--rounding", "nearest-6m"});
    const auto project = added({"project", "add", client, "Hut", "--billable", "no", "--rate", "12.50"});
    // An edit that has nothing to tell prints an empty document, or nothing.
    for (const Words& words : std::vector<Words>{{"rule", "move", copy, "--to", "2"},
                                                 {"rule", "disable", copy},
                                                 {"rule", "enable", copy},
                                                 {"rule", "delete", copy},
                                                 {"exclude", "delete", exclusion},
                                                 {"project", "rename", project, "Shed"},
                                                 {"project", "billable", "Shed", "yes"},
                                                 {"project", "rate", "Birch/Shed", "none"},
                                                 {"project", "rounding", project, "up-to-next-15m"},
                                                 {"project", "archive", project},
                                                 {"project", "restore", project},
                                                 {"project", "delete", project},
                                                 {"client", "rename", client, "Beech"},
                                                 {"client", "color", "Beech", "none"},
                                                 {"client", "rate", "Beech", "0"},
                                                 {"client", "rounding", "Beech", "none"},
                                                 {"client", "archive", "Beech"},
                                                 {"client", "restore", "Beech"},
                                                 {"client", "delete", "Beech"},
                                                 {"billing", "currency", "none"},
                                                 {"billing", "rounding", "none"},
                                                 {"resume"}})
        EXPECT_EQ(keys(json(words)), std::vector<std::string>{}) << testing::PrintToString(words);
    EXPECT_EQ(done({"billing", "currency", "eur"}), "");
    EXPECT_THAT(keys(json({"pause", "15m"})), ElementsAre("until"));
    EXPECT_EQ(keys(json({"pause", "until-resume"})), std::vector<std::string>{});
}

TEST_F(CommandOutput, AlignsTablesByCellsAndObeysNoControlCharacters)
{
    done({"client", "add", "東京", "--rate", "1"});
    done({"client", "add", "e\u0301te\u0301", "--rate", "1000"});
    done({"client", "add", "a\x1b[31m\nb"});
    const auto table = done({"client", "list"});
    EXPECT_THAT(table, HasSubstr("\n東京                 1              "));
    EXPECT_THAT(table, HasSubstr("\ne\u0301te\u0301               1000              "));
    EXPECT_THAT(table, HasSubstr("\na [31m b                            "));
    EXPECT_STREQ(json({"client", "list"})["clients"][2]["name"].GetString(), "a\x1b[31m\nb");
}

TEST_F(CommandOutput, SpeaksTheReadersLocaleInTablesOnly)
{
    recordDay();
    const auto plain = json({"day", "show", day});
    for (const auto& [locale, start] : {std::pair{"en_US.UTF-8", "9:00:00.+AM"},
                                        {"ar_EG.UTF-8", "٩:٠٠:٠٠"},
                                        {"xx_nowhere@modifier", "09?:00:00"}}) {
        environment["LC_ALL"] = locale;
        EXPECT_THAT(done({"day", "show", day}), ContainsRegex(start)) << locale;
        EXPECT_TRUE(json({"day", "show", day}) == plain) << locale;
    }
}

} // namespace
} // namespace stintbook
