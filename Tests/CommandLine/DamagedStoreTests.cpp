// Stores that cannot be opened, read or written: a sentence, exit status 1, and not a byte changed.

#include <csignal>

#include <gmock/gmock.h>
#include <grp.h>
#include <sys/resource.h>
#include <unistd.h>

#include "CommandLineTest.h"

namespace stintbook {
namespace {

using testing::AnyOf;
using testing::StartsWith;

constexpr std::size_t pageSize = 4096;

class DamagedStore : public CommandLineTest {
protected:
    DamagedStore()
    {
        recordDay();
        addAccount();
        execute("PRAGMA wal_checkpoint(TRUNCATE)");
        sound = contentsOf(storeFile());
    }

    /// The store's only file has these contents.
    void replaceStore(const std::string& contents)
    {
        std::filesystem::remove_all(storeDirectory);
        std::filesystem::create_directory(storeDirectory);
        writeFile(storeFile(), contents);
    }

    std::string called(const std::string& beginning, const std::string& end) const
    {
        return beginning + storeFile().string() + end;
    }

    /// No command opens it, and none leaves anything beside it but the lock.
    void expectUntouched(const std::string& contents, const std::string& sentence)
    {
        replaceStore(contents);
        for (const Words& words : std::vector<Words>{
                 {"day", "list"}, {"client", "add", "Birch"}, {"replay", directory / "day.jsonl"}})
            expectRefusal(words, sentence);
        for (const auto& [name, ignored] : filesIn(storeDirectory))
            EXPECT_THAT(name, AnyOf("Velloran.store", "Velloran.store.lock"));
    }

    static Preparation limitedFiles(rlim_t size)
    {
        return [size] {
            signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{size, size};
            setrlimit(RLIMIT_FSIZE, &limit);
        };
    }

    std::string sound;
};

TEST_F(DamagedStore, OfANewerVersionOrAnotherProgramIsLeftAlone)
{
    const auto changed = [&](const std::string& pragma) {
        replaceStore(sound);
        execute(pragma);
        return contentsOf(storeFile());
    };
    expectUntouched(changed("PRAGMA user_version = 10"),
                    called("The store ",
                           " was written by a newer version of Velloran, so this version left it as it is."));
    expectUntouched(changed("PRAGMA application_id = 7"),
                    called("The file ", " is not a Velloran store, so it was left as it is."));
    expectUntouched(
        changed("CREATE TABLE Stranger (id INTEGER)"),
        called("The tables of the store ", " are not those that its version has, so it was left as it is."));
    expectUntouched("", called("The file ", " is empty and not a Velloran store, so it was left as it is."));
    for (const auto& foreign : {std::string("notes"), std::string(10000, '\0'), sound.substr(1)})
        expectUntouched(foreign, called("The file ", " is not a Velloran store, so it was left as it is."));
}

TEST_F(DamagedStore, ThatIsCutShortIsLeftAlone)
{
    const auto sentence =
        called("The store ", " is cut short: a part of the file is missing. It was left as it is.");
    for (const auto size : {std::size_t{16}, std::size_t{99}, std::size_t{100}, pageSize - 1, pageSize,
                            pageSize + 1, sound.size() / 2, sound.size() - pageSize, sound.size() - 1})
        expectUntouched(sound.substr(0, size), sentence);

    // A log beside it that does not hold what is missing makes it no better.
    replaceStore(sound);
    done({"client", "add", "Birch"});
    std::filesystem::resize_file(storeFile(), sound.size() / 2);
    expectRefusal({"day", "list"}, sentence);
    expectRefusal({"client", "add", "Beech"}, sentence);
}

TEST_F(DamagedStore, InAPlaceThatCannotBeWrittenToIsStillRead)
{
    replaceStore(sound);
    const auto withoutRights = [] {
        if (geteuid() != 0)
            return;
        if (setgroups(0, nullptr) != 0 || setgid(65534) != 0 || setuid(65534) != 0)
            _exit(126);
    };
    using std::filesystem::perms;
    const auto readable = perms::owner_read | perms::owner_exec | perms::group_read | perms::group_exec
        | perms::others_read | perms::others_exec;
    std::filesystem::permissions(directory.path(), readable);
    std::filesystem::permissions(storeFile(), perms::owner_read | perms::others_read);
    std::filesystem::permissions(storeDirectory, readable);

    expectRefusal({"client", "add", "Birch"}, "The store cannot be written to.", withoutRights);
    const auto listed = run({"client", "list"}, withoutRights);
    EXPECT_EQ(listed.status, 0) << listed.errors;
    EXPECT_THAT(listed.output, testing::HasSubstr("Acme"));
    const auto replayed = run({"replay", directory / "day.jsonl"}, withoutRights);
    EXPECT_EQ(replayed.status, 1);
    EXPECT_TRUE(
        replayed.errors.ends_with(called("The store ", " cannot be written to: Permission denied.\n")))
        << replayed.errors;
    EXPECT_EQ(filesIn(storeDirectory).size(), 1U);

    std::filesystem::permissions(storeFile(), perms::none);
    if (geteuid() == 0)
        expectRefusal({"client", "list"}, called("The store ", " could not be read: Permission denied."),
                      withoutRights);
    std::filesystem::remove(storeFile());
    expectRefusal({"client", "list"}, called("The store ", " cannot be written to: Permission denied."),
                  withoutRights);
    std::filesystem::permissions(storeDirectory, perms::owner_all);
    std::filesystem::permissions(directory.path(), perms::owner_all);
}

TEST_F(DamagedStore, OnADiskWithoutRoomKeepsWhatItHolds)
{
    // No room for the log: nothing is made, also no new store.
    replaceStore(sound);
    for (const Words& words : std::vector<Words>{{"client", "list"}, {"client", "add", "Birch"}})
        expectRefusal(words, called("The store ", " could not be opened: disk I/O error."),
                      limitedFiles(1000));
    EXPECT_EQ(filesIn(storeDirectory).size(), 1U);
    const auto elsewhere = directory / "new";
    const auto created = run({"--store", elsewhere, "client", "list"}, limitedFiles(50'000));
    EXPECT_EQ(created.status, 1);
    EXPECT_EQ(created.errors,
              "The store " + (elsewhere / "Velloran.store").string()
                  + " could not be opened: disk I/O error.\n");
    EXPECT_EQ(filesIn(elsewhere).count("Velloran.store"), 0U);
    EXPECT_EQ(done({"--store", elsewhere, "--json", "client", "list"}), "{\"clients\":[]}\n");

    // Room for the log, but not for this edit.
    const auto before = done({"--json", "day", "show", day});
    const Words describe{"work", "describe", day, workAt("09:00"), std::string(90'000, 'x')};
    const auto described = run(describe, limitedFiles(40'000));
    EXPECT_EQ(described.status, 1);
    EXPECT_EQ(described.output, "");
    EXPECT_THAT(described.errors, StartsWith("The store's file could not be read or written ("));
    EXPECT_EQ(done({"--json", "day", "show", day}), before);
    EXPECT_NE(done(describe), "");
}

TEST_F(DamagedStore, WithAnUnreadableRecordNamesItsField)
{
    done({"client", "rounding", "Acme", "exact"});
    done({"project", "rate", "Website", "70"});
    done({"billing", "currency", "EUR"});
    done({"exclude", "add", "--domain", "news.example.org"});
    done({"work", "ignore", day, workAt("10:00")});
    done({"work", "ignore", day, workAt("09:00")});
    done({"day", "ready", day});
    const Words csv{"export", "csv", "--from", day, "--to", day};
    done(csv);
    execute("PRAGMA wal_checkpoint(TRUNCATE)");
    sound = contentsOf(storeFile());
    EXPECT_EQ(done({"store", "check"}), "The store is sound.\n");

    struct Damage {
        std::string sql;
        Words words;
        std::string field;
    };
    const Words history{"export", "history"};
    const Words show{"day", "show", day};
    for (const auto& [sql, words, field] : std::vector<Damage>{
             {"UPDATE BillingSettings SET currencyCode = 'XXQ'",
              {"billing", "show"},
              "billingSettings.currency"},
             {"UPDATE ClientBilling SET hourlyRate = '-1'", {"client", "list"}, "clientBilling.hourlyRate"},
             {"UPDATE ProjectBilling SET hourlyRate = 'x'", {"project", "list"}, "projectBilling.hourlyRate"},
             {"UPDATE ProjectBilling SET roundingRaw = ''", csv, "projectBilling.rounding"},
             {"UPDATE ExportLine SET actualSeconds = '-1'", history, "exportLine.duration"},
             {"UPDATE ExportSnapshot SET totalsBilledSeconds = ''", history, "exportSnapshot.totals"},
             {"UPDATE ReviewedWorkItem SET originRaw = 'x'", show, "reviewedItem.origin"},
             {"UPDATE ReviewedDisposition SET dispositionRaw = 'x'", show, "reviewedDisposition"},
             {"UPDATE RuleBrowserDomain SET host = 'no host'", {"rule", "list"}, "rule.browserDomain"},
             {"DELETE FROM RuleBrowserDomain", {"exclude", "list"}, "exclusionRule.match"},
             {"INSERT INTO SegmentReview SELECT id, id, NULL, NULL, 0, 0 FROM ActivitySegment WHERE true"
              " ON CONFLICT DO UPDATE SET assignedClientID = segmentID, assignedProjectID = NULL",
              show, "review.assignment"},
             {"INSERT INTO SegmentBrowserDomain SELECT id, 'no host' FROM ActivitySegment",
              {"segments", day},
              "segment.browserDomain"}}) {
        replaceStore(sound);
        execute(sql);
        expectRefusal(words, "A stored activity record could not be read (field: " + field + ").");
        // The check prints what it finds, and says by its status that it found something.
        const auto checked = run({"--json", "store", "check"});
        EXPECT_EQ(checked.status, 1);
        EXPECT_THAT(checked.errors, testing::ContainsRegex("^The store has [0-9]+ problems?.\n$"));
        EXPECT_THAT(checked.output, testing::HasSubstr("\"field\":\"" + field + "\""));
        EXPECT_TRUE(checked.output.ends_with("],\"isSound\":false}\n"));
    }
}

} // namespace
} // namespace stintbook
