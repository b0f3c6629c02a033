#include <gtest/gtest.h>

#include "Export/ExportDelivery.h"
#include "Export/ExportSnapshot.h"
#include "ExportFixture.h"

namespace stintbook {

namespace {

struct ExportSnapshotTest : testing::Test, ExportFixture { };

TEST_F(ExportSnapshotTest, KeepsTheDocumentAsItWasDelivered)
{
    auto filtered = request();
    filtered.clientFilterID = acme.id;
    const auto delivered = buildDocument(
        filtered, {ready(monday, {item(website, monday, 9, 60), item(website, monday, 10, 61)})}, directory,
        billing);
    const auto snapshot = snapshotOf(delivered, ExportSnapshotID::random(), {1'800'000'000.5});

    website.name = "Shop";
    billing.settings.currency = std::nullopt;
    EXPECT_EQ(documentOf(snapshot), delivered);
    EXPECT_EQ(snapshotOf(documentOf(snapshot), snapshot.id, snapshot.createdAt), snapshot);
    EXPECT_EQ(receiptFor(snapshot),
              (ExportReceipt{snapshot.id, snapshot.createdAt, ExportFormat::detailedCSV, 1, 2}));
}

TEST(ExportFailure, TellsADeliveryThatFailedFromARecordThatFailed)
{
    const ExportFailure unwritten = DeliveryNotProduced{message(ExportTextProblem::pasteboardRefused)};
    EXPECT_EQ(title(unwritten, ExportFormat::copySummary), "The export could not be completed.");
    EXPECT_EQ(message(unwritten),
              "The summary could not be placed on the pasteboard. "
              "Nothing was written, and no record was created.");

    const ExportFailure unrecorded = DeliveredButNotRecorded{};
    EXPECT_EQ(title(unrecorded, ExportFormat::detailedCSV), "The export was not recorded");
    EXPECT_EQ(message(unrecorded),
              "The file was produced, but the export could not be recorded on this computer. "
              "Your reviewed work and export choices are still available.");
}

} // namespace

} // namespace stintbook
