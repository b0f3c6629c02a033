#include <gtest/gtest.h>

#include "App/ExportDesk.h"
#include "Support/StoreOfADay.h"

namespace stintbook {

TEST(ExportDesk, DeliversNoOutdatedPreviewAndTellsWhenADayChangesAfterItsExport)
{
    StoreOfADay fixture;
    fixture.makeReady();
    auto book = fixture.book();
    ExportDesk desk{*fixture.store, fixture.calendar};
    const auto preview = [&] {
        return desk
            .preview({.rangeStart = fixture.day,
                      .rangeEnd = fixture.day,
                      .clientFilterID = {},
                      .projectFilterID = {},
                      .mode = ExportMode::detailed,
                      .format = ExportFormat::detailedCSV,
                      .fields = ExportFieldSet::standard(ExportMode::detailed)})
            ->document;
    };
    int deliveries = 0;
    const auto deliver = [&](const ExportDocumentModel& document) {
        return desk.deliver(document, {.moneyLocale = "en_US", .dateLocale = "en_US"}, fixture.at(21),
                            [&](const std::string&) -> std::expected<void, std::string> {
                                ++deliveries;
                                return {};
                            });
    };
    const auto describe = [&](const char* text) {
        const auto item = book.open(fixture.day)->content().items.front();
        ASSERT_TRUE(book.describe(fixture.day, item.id.uuid, text));
    };

    const auto outdated = preview();
    describe("Catalogue");
    ASSERT_TRUE(book.markReady(fixture.day, fixture.at(20)));
    EXPECT_TRUE(std::holds_alternative<PreviewOutdated>(deliver(outdated).error()));
    EXPECT_EQ(deliveries, 0);
    EXPECT_TRUE(desk.history()->empty());

    const auto document = preview();
    const auto receipt = deliver(document);
    ASSERT_TRUE(receipt);
    EXPECT_EQ(deliveries, 1);
    EXPECT_EQ(desk.snapshot(receipt->snapshotID)->lines, document.lines);
    EXPECT_EQ(book.open(fixture.day)->recordsState, RecordsDayState::exported);
    EXPECT_TRUE(desk.changedSince(*desk.snapshot(receipt->snapshotID))->empty());
    describe("Catalogue, second edition");
    EXPECT_EQ(*desk.changedSince(*desk.snapshot(receipt->snapshotID)), std::vector{fixture.day});
    EXPECT_EQ(book.open(fixture.day)->recordsState, RecordsDayState::changedSinceExport);
}

} // namespace stintbook
