// Every refusal that a command can provoke: its sentence, and a store that stays as it was.

#include <gmock/gmock.h>

#include "CommandLineTest.h"

namespace stintbook {
namespace {

const std::string unknownID = "0E8C1B5F-9C60-4B0E-8B67-1B0D5A6E2C11";

class Refusals : public CommandLineTest {
protected:
    Refusals() { addAccount(); }

    /// An archived client with a project, a client with an archived project, and two clients and two projects
    /// of one name.
    void addUnusableTargets()
    {
        for (const Words& words : std::vector<Words>{{"client", "add", "Old"},
                                                     {"project", "add", "Old", "Past"},
                                                     {"client", "archive", "Old"},
                                                     {"client", "add", "Birch"},
                                                     {"project", "add", "Birch", "Done"},
                                                     {"project", "add", "Birch", "Hut"},
                                                     {"project", "add", "Birch", "Website"},
                                                     {"project", "archive", "Done"},
                                                     {"client", "add", "Twin"},
                                                     {"client", "add", "Twin"}})
            done(words);
    }

    Words forAccount(Words words)
    {
        words.insert(words.end(), {"--client", "Acme", "--project", "Website"});
        return words;
    }
};

TEST_F(Refusals, OfClientsAndProjects)
{
    addUnusableTargets();
    const std::string missing =
        "That client or project is no longer in the client list, so nothing was saved.";
    const std::string blank = "A client or project needs a name, so nothing was saved.";
    expectRefusal({"client", "add", ""}, blank);
    expectRefusal({"client", "rename", "Acme", " \t\u00a0"}, blank);
    expectRefusal({"project", "add", "Acme", ""}, blank);
    expectRefusal({"project", "rename", "Acme/Website", ""}, blank);
    for (const auto* color : {"red", "#12345", "#12345G", "#1234567", ""})
        expectRefusal({"client", "add", "B", "--color", color},
                      "“" + std::string(color)
                          + "” is no colour, so nothing was saved. Write six hexadecimal digits, for example "
                            "#1A2B3C.");
    expectRefusal({"client", "rate", "Acme", "much"}, "Enter a number, for example 150 or 87.50.");
    expectRefusal({"project", "rate", "Acme/Website", "-1"}, "An hourly rate cannot be negative.");
    expectRefusal({"client", "add", "B", "--rate", std::string(39, '9')},
                  "That rate has more digits than can be stored exactly. Use at most 38 significant digits.");
    expectRefusal({"client", "rename", "Nobody", "B"}, "No client is called “Nobody”.");
    expectRefusal({"client", "archive", "acme"}, "No client is called “acme”.");
    expectRefusal({"client", "archive", "Twin"},
                  "More than one client is called “Twin”; give its identifier instead.");
    expectRefusal({"project", "archive", "Website"},
                  "More than one project is called “Website”; give its identifier instead.");
    expectRefusal({"project", "delete", "Acme/Nothing"}, "No project is called “Acme/Nothing”.");
    expectRefusal({"client", "delete", unknownID}, missing);
    expectRefusal({"client", "rate", unknownID, "5"}, missing);
    expectRefusal({"project", "archive", unknownID}, missing);
    expectRefusal({"client", "delete", "Acme"},
                  "Acme is still used by recorded work, so it cannot be deleted. Archive it instead.");
    expectRefusal({"project", "delete", "Acme/Website"},
                  "Website is still used by recorded work, so it cannot be deleted. Archive it instead.");
    expectRefusal({"project", "add", "Old", "New"},
                  "That client is archived, so a new project cannot be added to it.");
    expectRefusal(
        {"billing", "currency", "XXQ"},
        "“XXQ” is no currency code, so nothing was saved. Write an ISO 4217 code, for example EUR.");
}

TEST_F(Refusals, OfTargets)
{
    recordDay();
    addUnusableTargets();
    const auto because = [](const std::string& reason) {
        return "That client or project cannot receive new work: " + reason + ".";
    };
    struct Target {
        std::string client;
        std::string project;
        std::string reason;
    };
    const auto mail = workAt("10:00");
    for (const auto& [client, project, reason] :
         {Target{unknownID, unknownID, "its client is no longer in the client list"},
          {"Acme", unknownID, "its project is no longer in the client list"},
          {"Old", "Past", "its client is archived"},
          {"Birch", "Done", "its project is archived"},
          {"Acme", "Hut", "its project belongs to a different client"}}) {
        const Words target{"--client", client, "--project", project};
        for (Words words : std::vector<Words>{{"work", "assign", day, mail},
                                              {"work", "add", day, "--from", "14:00", "--to", "15:00"},
                                              {"rule", "suggest", day, mail},
                                              {"rule", "add", "--title", "t"}}) {
            words.insert(words.end(), target.begin(), target.end());
            expectRefusal(words, because(reason));
        }
    }
    expectRefusal({"project", "add", unknownID, "New"},
                  because("its client is no longer in the client list"));
    // Of two projects of one name the named client's is meant.
    done({"rule", "add", "--title", "t", "--client", "Birch", "--project", "Website"});
}

TEST_F(Refusals, OfRules)
{
    const auto rule = json({"rule", "list"})["attributionRules"][0]["id"].GetString() + std::string();
    const std::string noCondition = "A rule needs at least one condition — give one of them a value";
    const std::string missing = "That rule is no longer in the list.";
    expectRefusal(forAccount({"rule", "add"}), noCondition);
    expectRefusal(forAccount({"rule", "add", "--application="}), noCondition);
    expectRefusal({"exclude", "add", "--title", ""}, noCondition);
    for (const auto* host : {"no host", "a..b", "http://"})
        expectRefusal({"exclude", "add", "--domain", host},
                      "“" + std::string(host)
                          + "” is no web domain, so nothing was saved. Write a host, for example "
                            "docs.example.org.");
    expectRefusal({"rule", "move", rule, "--to", "2"}, "The list has no such position.");
    for (const auto* verb : {"copy", "enable", "disable", "delete"})
        expectRefusal({"rule", verb, unknownID}, missing);
    expectRefusal({"rule", "move", unknownID, "--to", "1"}, missing);
    expectRefusal({"exclude", "delete", rule}, missing);
    expectRefusal({"rule", "delete", "first"}, "“first” is no identifier.");

    recordDay();
    expectRefusal({"rule", "suggest", day, unknownID},
                  "No work on this day has the identifier " + unknownID + ".");
    expectRefusal({"rule", "suggest", day, workAt("10:00")},
                  "This work has no client and project yet, so there is nothing that a rule could assign.");
    expectRefusal({"rule", "suggest", day, workAt("09:00"), "--title", ""}, noCondition);
}

TEST_F(Refusals, OfStructuralEdits)
{
    recordDay();
    const auto editor = workAt("09:00");
    const auto mail = workAt("10:00");
    const auto late = workAt("11:30");
    const std::string accounted =
        "That time is already accounted for. Split, ignore or adjust the existing work first.";
    const std::string invalid = "Missing work must be a positive interval inside one day.";
    const std::string unassigned = "Assign this work to a client and project before making it structural.";

    expectRefusal({"work", "freeze", day, unknownID},
                  "No work on this day has the identifier " + unknownID + ".");
    expectRefusal({"work", "freeze", "2026-11-19", editor},
                  "No work on this day has the identifier " + editor + ".");
    expectRefusal({"work", "freeze", day, editor, mail}, unassigned);
    expectRefusal({"work", "confirm", day, mail}, unassigned);
    for (const auto* time : {"09:00", "10:00", "08:00", "24:00"})
        expectRefusal({"work", "split", day, editor, "--at", time},
                      "Choose a time inside the block, not at either end.");
    expectRefusal({"work", "merge", day, editor}, "Select two or more adjacent blocks to merge.");
    expectRefusal({"work", "merge", day, editor, late},
                  "There is idle time or a capture gap between these, so they are not one stretch of work.");
    expectRefusal(forAccount({"work", "add", day, "--from", "09:30", "--to", "14:00"}), accounted);
    expectRefusal(forAccount({"work", "add", day, "--from", "15:00", "--to", "15:00"}), invalid);
    expectRefusal(forAccount({"work", "add", day, "--from", "16:00", "--to", "15:00"}), invalid);
    expectRefusal(forAccount({"work", "convert-idle", day, unknownID}),
                  "No work on this day has the identifier " + unknownID + ".");
    expectRefusal({"day", "ready", day}, "Some work has no client and project yet.");
    expectRefusal({"day", "ready", "2026-11-19"}, "There is no work on this day to make ready.");

    done(forAccount({"work", "assign", day, mail, "--billable", "no"}));
    expectRefusal({"work", "merge", day, editor, mail},
                  "Work with different clients, projects or billable states cannot be merged.");
    done(forAccount({"work", "assign", day, mail}));
    done({"work", "describe", day, editor, "one"});
    done({"work", "describe", day, mail, "two"});
    expectRefusal({"work", "merge", day, workAt("09:00"), workAt("10:00")},
                  "Both parts have their own description. Clear one before merging.");
    done(forAccount({"work", "add", day, "--from", "12:00", "--to", "13:00"}));
    expectRefusal({"work", "merge", day, late, workAt("12:00")},
                  "Manual work and observed work cannot be merged.");
    done(forAccount({"work", "add", day, "--from", "14:00", "--to", "15:00"}));
    expectRefusal({"work", "merge", day, workAt("12:00"), workAt("14:00")},
                  "Only adjacent blocks with the same client and project can be merged.");
    done({"work", "ignore", day, late});
    const auto ignored = workAt("11:30");
    expectRefusal(
        {"work", "describe", day, ignored, "x"},
        "Work you marked as not work keeps the client, project, billable state and description it "
        "had, so restoring it brings back exactly what you set aside. Restore it to work first, then "
        "edit it.");
    expectRefusal({"work", "merge", day, ignored, workAt("12:00")},
                  "Work you marked as not work cannot be merged. Restore it to work first.");
}

TEST_F(Refusals, OfExports)
{
    recordDay();
    const Words range{"--from", "2026-11-01", "--to", "2026-11-30"};
    const auto exported = [&](Words words) {
        words.insert(words.end(), range.begin(), range.end());
        return words;
    };
    const auto file = (directory / "bill.csv").string();
    expectRefusal(exported({"export", "csv", "--output", file}),
                  "Export blocked.\n" + day + ": Some work has no client and project yet.");
    done({"work", "ignore", day, workAt("10:00")});
    done({"day", "ready", day});
    expectRefusal(exported({"export", "csv", "--client", unknownID}), "There is nothing to export yet");
    expectRefusal({"export", "summary", "--from", "2026-11-21", "--to", "2026-11-30"},
                  "There is nothing to export yet");
    expectRefusal(exported({"export", "preview", "--client", "Nobody"}), "No client is called “Nobody”.");
    expectRefusal({"export", "show", unknownID}, "No export has the identifier " + unknownID + ".");
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(Refusals, OfRecording)
{
    const auto recorded = run({"record"});
    EXPECT_EQ(recorded.status, 1);
    EXPECT_EQ(recorded.errors,
              "This desktop does not tell which application is in front, so nothing was recorded.\n");
    EXPECT_EQ(recorded.output, "");
    expectRefusal({"replay", "/nowhere/day.jsonl"},
                  "The trace “/nowhere/day.jsonl” could not be read, so nothing was replayed.");
    const auto trace = (directory / "bad.jsonl").string();
    writeFile(trace, R"({"at":0,"frontmost":{"bundleIdentifier":"a","displayName":"A"}})");
    const auto result = run({"replay", trace});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, testing::StartsWith("Line 1: "));
    EXPECT_EQ(result.output, "");

    // What would not be remembered for the next start was not paused.
    std::filesystem::create_directory(directory / ".config");
    writeFile(directory / ".config" / "velloran-development", "no directory");
    const auto pause = run({"pause", "1h"});
    EXPECT_EQ(pause.status, 1);
    EXPECT_EQ(pause.output, "");
    EXPECT_TRUE(pause.errors.ends_with("The preferences could not be saved, so nothing was changed.\n"));
}

} // namespace
} // namespace stintbook
