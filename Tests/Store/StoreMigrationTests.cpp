#include <fmt/format.h>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Store/StoreInstanceLock.h"
#include "Store/StoreSchema.h"
#include "StoreSamples.h"
#include "Support/CapturedLog.h"

namespace stintbook {
namespace {

/// A copy of the store that a version wrote.
struct EarlierStore : SampleStore {
    explicit EarlierStore(int version)
    {
        std::filesystem::copy_file(
            fmt::format("{}/Tests/Fixtures/Stores/v{}.store", STINTBOOK_SOURCE_DIRECTORY, version), file);
    }

    std::filesystem::path backup(int version) const
    {
        return file.string() + fmt::format(".v{}-backup", version);
    }
};

std::vector<std::string> declarations(StoreDatabase& database)
{
    return *database.read([](StoreConnection& connection) -> Stored<std::vector<std::string>> {
        std::vector<std::string> texts;
        auto rows = connection.query("SELECT type || name || ifnull(sql, '') FROM sqlite_schema ORDER BY 1");
        while (rows.next())
            texts.push_back(rows.take<std::string>());
        return texts;
    });
}

class StoreMigration : public testing::TestWithParam<int> {
public:
    /// The value of a record that came with `version`, else its default.
    template <typename T> static T since(int version, const T& value, const T& otherwise)
    {
        return GetParam() >= version ? value : otherwise;
    }
};

TEST_P(StoreMigration, KeepsEveryRecordOfTheEarlierVersion)
{
    const CapturedLog log;
    const EarlierStore store(GetParam());
    const auto database = store.open();
    PersistentActivitySegmentRepository recorded(database);
    PersistentReviewStore reviewed(database);

    const auto segments = *recorded.segments(allTime);
    ASSERT_EQ(segments.size(), 2U);
    EXPECT_EQ(segments[0].context, FocusedContext::documentTitle("Offer – Müller.txt"));
    EXPECT_EQ(segments[0].end, Instant{1795162500.5});
    EXPECT_EQ(segments[0].browserDomain, since(6, BrowserDomain::fromText("docs.example.org"), {}));
    EXPECT_EQ(segments[1].gapReason, GapReason::systemSleep);

    const auto clients = *reviewed.clients();
    EXPECT_EQ(clients.size(), since(2, 1U, 0U));
    EXPECT_EQ(reviewed.exclusionRules()->size(), since(2, 1U, 0U));
    EXPECT_EQ(reviewed.attributionRules()->size(), since(2, 1U, 0U));
    EXPECT_EQ(reviewed.reviews(std::vector{segments[0].id})->size(), since(2, 1U, 0U));
    if (!clients.empty()) {
        EXPECT_EQ(clients[0].color, since(8, ClientColor::fromText("#1A2B3C"), {}));
    }

    const auto items = *reviewed.items(sampleDay);
    ASSERT_EQ(items.size(), since(3, 1U, 0U));
    EXPECT_EQ(reviewed.approval(sampleDay)->has_value(), GetParam() >= 3);
    if (!items.empty()) {
        EXPECT_EQ(items[0].slices.size(), 1U);
        EXPECT_EQ(items[0].disposition,
                  since(4, ReviewedItemDisposition::ignored, ReviewedItemDisposition::included));
    }

    const auto snapshots = *reviewed.snapshots();
    ASSERT_EQ(snapshots.size(), since(5, 1U, 0U));
    if (!snapshots.empty()) {
        const auto& fields = snapshots[0].fields;
        EXPECT_EQ(fields.includesDate, GetParam() < 7);
        EXPECT_TRUE(fields.includesClient && fields.includesProject && fields.includesDuration);
        EXPECT_FALSE(fields.includesTimeOfDay);
        EXPECT_EQ(snapshots[0].lines.at(0).amount, Decimal::parse("26.25"));
        EXPECT_EQ(snapshots[0].days.size(), 1U);
    }
    const auto billing = *reviewed.billing();
    EXPECT_EQ(billing.settings.currency, since(5, BillingCurrency::fromText("EUR"), {}));
    EXPECT_EQ(billing.settings.defaultRounding,
              since(9, std::optional(RoundingPolicy::upToNextFifteenMinutes), {}));
}

TEST_P(StoreMigration, EndsInTheLayoutOfAFreshStoreAndKeepsACopy)
{
    const CapturedLog log;
    const EarlierStore store(GetParam());
    const SampleStore fresh;
    const auto before = contentsOf(store.file);
    const auto database = store.open(StoreRole::guest);
    EXPECT_EQ(declarations(*database), declarations(*fresh.open()));
    EXPECT_EQ(number(*database, "PRAGMA user_version"), currentSchemaVersion);
    EXPECT_TRUE(isSound(*database));

    ASSERT_EQ(std::filesystem::exists(store.backup(GetParam())), GetParam() < currentSchemaVersion);
    if (GetParam() < currentSchemaVersion) {
        StoreConnection copy(store.backup(GetParam()), StoreConnection::Access::immutable);
        EXPECT_EQ(copy.number("PRAGMA user_version"), GetParam());
        EXPECT_EQ(copy.number("SELECT count(*) FROM ActivitySegment"), 2);
        EXPECT_EQ(std::filesystem::status(store.backup(GetParam())).permissions(),
                  std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    } else {
        EXPECT_EQ(contentsOf(store.file), before);
    }
}

TEST_P(StoreMigration, KnowsTheLayoutThatItsStepsMake)
{
    const auto made = StoreConnection::inMemory();
    applySchemaSteps(*made, 0, GetParam());
    EXPECT_EQ(layoutDigest(*made), expectedLayoutDigest(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(FromEveryVersion, StoreMigration, testing::Range(1, currentSchemaVersion + 1));

TEST(StoreMigrationRefused, LeavesAnEarlierStoreToTheCopyThatRuns)
{
    const EarlierStore store(3);
    const auto lock = StoreInstanceLock::acquire(store.file);
    const auto before = filesIn(store.directory.path());
    EXPECT_TRUE(store.refusal(StoreRole::guest).contains("in use by an earlier version"));
    EXPECT_EQ(filesIn(store.directory.path()), before);
}

} // namespace
} // namespace stintbook
