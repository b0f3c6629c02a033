// Writes v1.store to v9.store into a folder: each version's layout with sample rows. The stores of shipped
// versions are never written anew; this is for the next version's.
//
//     WriteStoreFixtures Tests/Fixtures/Stores

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

#include <SQLiteCpp/Exception.h>
#include <fmt/format.h>

#include "Store/StoreSchema.h"

namespace {

using namespace stintbook;

struct Sample {
    /// The version that brought the tables and columns.
    int from;
    std::string_view sql;
};

// 1795129200 is 2026-11-20 00:00 in Berlin.
constexpr std::array samples = {
    Sample{
        1,
        "INSERT INTO ActivitySegment VALUES"
        " (x'10000000000000000000000000000001', 1795161600, 1795162500.5, 'work', NULL, "
        "'org.gnome.TextEditor',"
        " 'Text Editor', 'documentTitle', 'Offer – Müller.txt', 'applicationAndWindow', 'observed',"
        " 'Europe/Berlin', 3600),"
        " (x'10000000000000000000000000000002', 1795162500.5, 1795166100, 'gap', 'systemSleep', NULL, NULL,"
        " NULL, NULL, 'none', 'observed', 'Europe/Berlin', 3600)"},
    Sample{2,
           "INSERT INTO Client VALUES (x'20000000000000000000000000000001', 'Müller & Co', 0);"
           "INSERT INTO Project VALUES (x'30000000000000000000000000000001', "
           "x'20000000000000000000000000000001',"
           " 'Website', 1, 0);"
           "INSERT INTO AttributionRule VALUES (x'40000000000000000000000000000001', 1, 0, NULL, 'offer',"
           " x'20000000000000000000000000000001', x'30000000000000000000000000000001', NULL);"
           "INSERT INTO ExclusionRule VALUES (x'40000000000000000000000000000002', 1, 0, "
           "'org.example.Player', NULL);"
           "INSERT INTO SegmentReview VALUES (x'10000000000000000000000000000001',"
           " x'20000000000000000000000000000001', x'30000000000000000000000000000001', 0, 0, 1)"},
    Sample{3,
           "INSERT INTO ReviewedWorkItem VALUES (x'50000000000000000000000000000001', 1795129200, "
           "'Europe/Berlin',"
           " 1795161600, 1795162500.5, 'observed-reviewed', x'20000000000000000000000000000001',"
           " x'30000000000000000000000000000001', 1, 'Offer');"
           "INSERT INTO ReviewedSourceSlice VALUES (x'50000000000000000000000000000001',"
           " x'10000000000000000000000000000001', 1795161600, 1795162500.5);"
           "INSERT INTO DayReviewApproval VALUES ('2026-11-20@Europe/Berlin', 1795129200, 'Europe/Berlin',"
           " '00000000000000000000000000000000000000000000000000000000000000aa', 1795190000)"},
    Sample{4, "INSERT INTO ReviewedDisposition VALUES (x'50000000000000000000000000000001', 'ignored')"},
    Sample{
        5,
        "INSERT INTO ClientBilling VALUES (x'20000000000000000000000000000001', '87.5', 'nearest-6m');"
        "INSERT INTO ProjectBilling VALUES (x'30000000000000000000000000000001', NULL, 'exact');"
        "INSERT INTO BillingSettings VALUES ('billing-settings', 'EUR');"
        "INSERT INTO ExportSnapshot (id, createdAt, formatRaw, modeRaw, includesTimeOfDay, "
        "includesDescription,"
        " includesBillableState, includesRateAndAmount, rangeStartDayID, rangeStartDate,"
        " rangeStartTimeZoneIdentifier, rangeEndDayID, rangeEndDate, rangeEndTimeZoneIdentifier,"
        " currencyCode, totalsActualSeconds, totalsBilledSeconds, totalsBillableSeconds,"
        " totalsNonBillableSeconds, totalsAmount, totalsUnpricedLineCount)"
        " VALUES (x'60000000000000000000000000000001', 1795190100, 'detailed-csv', 'detailed', 0, 1, 0, 1,"
        " '2026-11-20@Europe/Berlin', 1795129200, 'Europe/Berlin', '2026-11-20@Europe/Berlin', 1795129200,"
        " 'Europe/Berlin', 'EUR', '901', '1080', '1080', '0', '26.25', 0);"
        "INSERT INTO ExportLine VALUES (x'60000000000000000000000000000001', 0, '2026-11-20@Europe/Berlin',"
        " 1795129200, 'Europe/Berlin', 1795161600, 1795162500.5, 'Müller & Co', 'Website', 'Offer', '901',"
        " '1080', 1, '87.5', '26.25', 'EUR', 'nearest-6m');"
        "INSERT INTO ExportDayRevision VALUES (x'60000000000000000000000000000001', 0,"
        " '2026-11-20@Europe/Berlin', 1795129200, 'Europe/Berlin',"
        " '00000000000000000000000000000000000000000000000000000000000000aa')"},
    Sample{
        6,
        "INSERT INTO SegmentBrowserDomain VALUES (x'10000000000000000000000000000001', 'docs.example.org');"
        "INSERT INTO RuleBrowserDomain VALUES"
        " (x'40000000000000000000000000000001', 'attribution', 'example.org')"},
    Sample{7, "UPDATE ExportSnapshot SET includesDate = 0"},
    Sample{8, "INSERT INTO ClientAppearance VALUES (x'20000000000000000000000000000001', '#1A2B3C')"},
    Sample{9, "INSERT INTO BillingRounding VALUES ('billing-rounding', 'up-to-next-15m')"},
};

void writeStore(const std::filesystem::path& file, int version)
{
    std::filesystem::remove(file);
    std::fclose(std::fopen(file.c_str(), "wb"));
    StoreConnection store(file, StoreConnection::Access::readWrite);
    store.set(StoreConnection::Checkpoints::own);
    store.execute(fmt::format("PRAGMA page_size = 512; PRAGMA auto_vacuum = INCREMENTAL;"
                              "PRAGMA application_id = {}",
                              storeApplicationID));
    store.execute("BEGIN");
    applySchemaSteps(store, 0, version);
    for (const auto& sample : samples) {
        if (sample.from <= version)
            store.execute(std::string(sample.sql));
    }
    store.execute("COMMIT");
    store.execute("PRAGMA journal_mode = WAL");
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        fmt::print(stderr, "usage: {} FOLDER\n", arguments[0]);
        return 2;
    }
    try {
        for (int version = 1; version <= currentSchemaVersion; ++version)
            writeStore(std::filesystem::path(arguments[1]) / fmt::format("v{}.store", version), version);
    } catch (const SQLite::Exception& exception) {
        fmt::print(stderr, "{}\n", exception.what());
        return 1;
    }
    return 0;
}
