#include <gtest/gtest.h>

#include "App/ExportDesk.h"
#include "StoreOfADay.h"

namespace stintbook {

namespace {

class ExportDeskTest : public ::testing::Test {
protected:
    void makeReady()
    {
        const auto ids = fixture.blockIDs();
        auto book = fixture.book();
        ASSERT_TRUE(book.assign(fixture.day, ids, fixture.target()));
        ASSERT_TRUE(book.markReady(fixture.day, fixture.at(20)));
    }
    ExportRequest request() const
    {
        return {.rangeStart = fixture.day,
                .rangeEnd = fixture.day,
                .clientFilterID = {},
                .projectFilterID = {},
                .mode = ExportMode::detailed,
                .format = ExportFormat::detailedCSV,
                .fields = ExportFieldSet::standard(ExportMode::detailed)};
    }
    std::expected<ExportReceipt, ExportDeskProblem> deliver(const ExportDocumentModel& document)
    {
        return desk.deliver(document, region, fixture.at(21) + Seconds{0.123456},
                            [this](const std::string& bytes) {
                                delivered.push_back(bytes);
                                return answer;
                            });
    }

    StoreOfADay fixture;
    ExportRegion region{.moneyLocale = "en_US", .dateLocale = "en_US"};
    ExportDesk desk{*fixture.store, fixture.calendar};
    std::vector<std::string> delivered;
    std::expected<void, std::string> answer;
};

} // namespace

TEST_F(ExportDeskTest, RecordsWhatItDeliveredAndTellsWhenTheDayChangesAfterwards)
{
    makeReady();
    const auto preview = *desk.preview(request());
    const auto receipt = deliver(preview.document);
    ASSERT_TRUE(receipt);
    EXPECT_EQ(receipt->lineCount, 3);
    ASSERT_EQ(desk.history()->size(), 1U);
    EXPECT_EQ(desk.snapshot(receipt->snapshotID)->lines, preview.document.lines);
    auto book = fixture.book();
    EXPECT_EQ(book.open(fixture.day)->recordsState, RecordsDayState::exported);

    const auto item = book.open(fixture.day)->content.items.front();
    ASSERT_TRUE(book.describe(fixture.day, item.id.uuid, "Catalogue"));
    EXPECT_EQ(book.open(fixture.day)->recordsState, RecordsDayState::changedSinceExport);
}

TEST_F(ExportDeskTest, DeliversNothingWhenTheWorkChangedSinceThePreview)
{
    makeReady();
    const auto preview = *desk.preview(request());
    auto book = fixture.book();
    const auto item = book.open(fixture.day)->content.items.front();
    ASSERT_TRUE(book.describe(fixture.day, item.id.uuid, "Catalogue"));
    ASSERT_TRUE(book.markReady(fixture.day, fixture.at(20)));
    const auto outdated = deliver(preview.document);
    ASSERT_FALSE(outdated);
    EXPECT_TRUE(std::holds_alternative<PreviewOutdated>(outdated.error()));
    EXPECT_TRUE(delivered.empty());
    EXPECT_TRUE(desk.history()->empty());
}

TEST_F(ExportDeskTest, RecordsNothingThatWasNotDelivered)
{
    const auto blocked = deliver(desk.preview(request())->document);
    ASSERT_FALSE(blocked);
    EXPECT_TRUE(delivered.empty());

    makeReady();
    answer = std::unexpected("No space left on device");
    const auto failed = deliver(desk.preview(request())->document);
    ASSERT_FALSE(failed);
    EXPECT_TRUE(message(failed.error()).contains("Nothing was written, and no record was created."));
    EXPECT_TRUE(desk.history()->empty());
}

TEST_F(ExportDeskTest, GivesTheBytesOfADeliveredTimesheetAgainFromItsRecord)
{
    makeReady();
    auto wanted = request();
    wanted.format = ExportFormat::timesheetPDF;
    const auto receipt = deliver(desk.preview(wanted)->document);
    ASSERT_TRUE(receipt);
    const auto snapshot = *desk.snapshot(receipt->snapshotID);
    EXPECT_EQ(snapshot.format, ExportFormat::timesheetPDF);
    EXPECT_TRUE(delivered.back().starts_with("%PDF-"));
    EXPECT_TRUE(render(documentOf(snapshot), region, snapshot.createdAt) == delivered.back());
}

} // namespace stintbook
