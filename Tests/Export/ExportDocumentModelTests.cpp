#include <random>

#include <gmock/gmock.h>

#include "Export/ExportDocumentModel.h"
#include "ExportFixture.h"

namespace stintbook {

namespace {

using testing::ElementsAre;

struct ExportDocumentModelTest : testing::Test, ExportFixture { };

std::vector<std::string> projectsOf(const ExportDocumentModel& document)
{
    std::vector<std::string> names;
    for (const auto& line : document.lines)
        names.push_back(line.projectName);
    return names;
}

TEST_F(ExportDocumentModelTest, MakesOnePricedLineOfAnIncludedItem)
{
    auto work = item(website, monday, 9, 5400);
    work.description = "Layout";
    billing.projects[website.id] = {.rounding = RoundingPolicy::nearestFifteenMinutes};

    const auto made = documentWith({work});
    const ExportLine expected{
        .dayID = "2026-11-16@Europe/Berlin",
        .dayStart = monday.start,
        .timeZoneIdentifier = "Europe/Berlin",
        .start = work.start,
        .end = work.end,
        .clientName = "Acme",
        .projectName = "Website",
        .description = "Layout",
        .actualSeconds = 5400,
        .billedSeconds = 5400,
        .isBillable = true,
        .hourlyRate = Decimal(100),
        .amount = Decimal(150),
        .currencyCode = "EUR",
        .rounding = RoundingPolicy::nearestFifteenMinutes,
    };
    EXPECT_THAT(made.lines, ElementsAre(expected));
    EXPECT_THAT(made.days,
                ElementsAre(ExportDayRevision{"2026-11-16@Europe/Berlin", monday.start, "Europe/Berlin",
                                              std::string(64, 'a')}));
    EXPECT_EQ(made.block(), std::nullopt);
}

TEST_F(ExportDocumentModelTest, BillsFromWholeSecondsHalvesUp)
{
    billing.settings.defaultRounding = RoundingPolicy::upToNextSixMinutes;
    const auto made = documentWith(
        {item(website, monday, 9, 0.5), item(website, monday, 10, 0.4), item(website, monday, 11, 360.4)});
    std::vector<std::string> figures;
    for (const auto& line : made.lines)
        figures.push_back(line.actualSeconds.text() + " as " + line.billedSeconds.text());
    EXPECT_THAT(figures, ElementsAre("1 as 360", "0 as 0", "360 as 360"));
}

TEST_F(ExportDocumentModelTest, RunsByDayThenStartAndKeepsTheOrderOfEqualStarts)
{
    const Project gone{.id = ProjectID::random(), .clientID = ClientID::random()};
    const auto made = document(
        {ready(tuesday,
               {item(website, tuesday, 9, 60), item(support, tuesday, 8, 60), item(website, tuesday, 8, 60)}),
         ready(monday, {item(gone, monday, 15, 60)})});
    EXPECT_THAT(projectsOf(made), ElementsAre("Unavailable project", "Support", "Website", "Website"));
    EXPECT_EQ(made.lines[0].clientName, "Unavailable client");
    EXPECT_EQ(made.lines[3].start, tuesday.start + Seconds{9 * 3600.0});
}

TEST_F(ExportDocumentModelTest, HoldsBackDaysThatAreNotReadyAndExportsTheOthers)
{
    const ExportDayInput open{.day = monday,
                              .items = {item(website, monday, 9, 60)},
                              .notReadyReason = "Some work has no client and project yet."};
    const auto made = document({open, ready(tuesday, {item(support, tuesday, 9, 60)})});
    EXPECT_THAT(projectsOf(made), ElementsAre("Support"));
    EXPECT_THAT(made.blockedDays, ElementsAre(ExportBlockedDay{monday, open.notReadyReason}));
    EXPECT_EQ(made.block(), std::nullopt);
    EXPECT_EQ(document({open}).block(), ExportBlock::daysNotReady);
    EXPECT_EQ(blockedDaysHeading({made.blockedDays[0], made.blockedDays[0]}), "2 days need review");
}

TEST_F(ExportDocumentModelTest, ExportsNothingIgnoredAndNothingTheFiltersLeaveOut)
{
    auto ignored = item(website, monday, 8, 60);
    ignored.disposition = ReviewedItemDisposition::ignored;
    const std::vector days{ready(monday, {ignored, item(website, monday, 9, 60)}),
                           ready(tuesday, {item(support, tuesday, 9, 60)})};

    auto filtered = request();
    filtered.clientFilterID = bolt.id;
    const auto ofBolt = buildDocument(filtered, days, directory, billing);
    EXPECT_THAT(projectsOf(ofBolt), ElementsAre("Support"));
    EXPECT_EQ(ofBolt.days.size(), 1U);
    EXPECT_EQ(ofBolt.clientFilterName, "Bolt & Söhne");

    filtered.projectFilterID = website.id;
    const auto ofNothing = buildDocument(filtered, days, directory, billing);
    EXPECT_EQ(ofNothing.block(), ExportBlock::noIncludedWork);
    EXPECT_TRUE(ofNothing.days.empty());

    EXPECT_EQ(documentWith({ignored}).block(), ExportBlock::noIncludedWork);
}

TEST_F(ExportDocumentModelTest, TakesTheDaysThatStartInTheRangeWhicheverWayRoundItIsGiven)
{
    const auto inNewYork = CalendarContext::inZone("America/New_York")->dayOn({2026, 11, 17}).value();
    const auto inTokyo = CalendarContext::inZone("Asia/Tokyo")->dayOn({2026, 11, 16}).value();
    std::vector<ExportDayInput> days;
    for (const auto& day : {dayOn(15), inTokyo, monday, tuesday, inNewYork, dayOn(18)})
        days.push_back(ready(day, {item(website, day, 9, 60)}));

    auto turned = request();
    std::swap(turned.rangeStart, turned.rangeEnd);
    const auto made = buildDocument(turned, days, directory, billing);
    std::vector<std::string> exported;
    for (const auto& day : made.days)
        exported.push_back(day.dayID);
    EXPECT_THAT(
        exported,
        ElementsAre("2026-11-16@Europe/Berlin", "2026-11-17@Europe/Berlin", "2026-11-17@America/New_York"));
    EXPECT_EQ(made.request.rangeStart, monday);
}

TEST_F(ExportDocumentModelTest, TotalsKnowWhatIsPricedEvenWithoutACurrencyAndWhatIsNot)
{
    auto unbilled = item(website, monday, 11, 3600);
    unbilled.assignment.isBillable = false;
    const auto made =
        documentWith({item(website, monday, 9, 3600), item(support, monday, 10, 1800), unbilled});

    EXPECT_EQ(made.lines[2].hourlyRate, Decimal(100));
    EXPECT_EQ(made.lines[2].amount, std::nullopt);
    EXPECT_EQ(made.totals,
              (ExportTotals{.actualSeconds = 9000,
                            .billedSeconds = 9000,
                            .billableBilledSeconds = 5400,
                            .nonBillableBilledSeconds = 3600,
                            .amount = std::nullopt,
                            .knownAmount = Decimal(100),
                            .currencyCode = "EUR",
                            .unpricedLineCount = 1}));

    const auto onlyUnbilled = documentWith({unbilled}).totals;
    EXPECT_EQ(onlyUnbilled.unpricedLineCount, 0);
    EXPECT_EQ(onlyUnbilled.amount, std::nullopt);

    billing.settings.currency = std::nullopt;
    EXPECT_EQ(documentWith({item(website, monday, 9, 3600)}).totals.unpricedLineCount, 0);
}

TEST_F(ExportDocumentModelTest, GroupsLinesOfEqualTermsIntoSummaryRows)
{
    auto unbilled = item(website, monday, 14, 60);
    unbilled.assignment.isBillable = false;
    const auto made = document({ready(monday,
                                      {item(website, monday, 9, 3600), item(support, monday, 10, 60),
                                       item(website, monday, 11, 1800), unbilled}),
                                ready(tuesday, {item(website, tuesday, 9, 60)})});
    auto lines = made.lines;
    lines.push_back(lines.back());
    lines.back().hourlyRate = Decimal(101);
    std::vector<std::string> described;
    for (const auto& row : summaryRows(lines))
        described.push_back(row.projectName + " " + row.actualSeconds.text() + " × "
                            + std::to_string(row.lineCount));
    EXPECT_THAT(described,
                ElementsAre("Website 5400 × 2", "Support 60 × 1", "Website 60 × 1", "Website 60 × 1",
                            "Website 60 × 1"));
}

TEST_F(ExportDocumentModelTest, RowsSectionsAndTotalsAddUpToTheLines)
{
    std::mt19937_64 random(11); // NOLINT(bugprone-random-generator-seed): every run is the same
    for (int round = 0; round < 50; ++round) {
        billing.settings.defaultRounding = RawValues<RoundingPolicy>::table[random() % 5].first;
        std::vector<ExportDayInput> days;
        for (const auto& day : {tuesday, monday}) {
            std::vector<ReviewedWorkItem> items;
            for (auto count = random() % 8; count > 0; --count) {
                items.push_back(item(random() % 2 ? website : support, day,
                                     static_cast<double>(random() % 20),
                                     static_cast<double>(random() % 90'000) / 10));
                items.back().assignment.isBillable = random() % 3 != 0;
            }
            days.push_back(ready(day, items));
        }
        const auto made = document(days);

        Decimal ofRows;
        Decimal amountOfRows;
        int lineCount = 0;
        for (const auto& row : summaryRows(made.lines)) {
            ofRows += row.billedSeconds;
            amountOfRows += row.amount.value_or(0);
            lineCount += row.lineCount;
        }
        std::size_t linesOfSections = 0;
        Decimal ofSections;
        for (const auto& section : sections(made.lines)) {
            linesOfSections += section.lines.size();
            ofSections += totals(section.lines, made.currency).billedSeconds;
        }
        EXPECT_EQ(ofRows, made.totals.billedSeconds);
        EXPECT_EQ(ofSections, made.totals.billedSeconds);
        EXPECT_EQ(made.totals.billableBilledSeconds + made.totals.nonBillableBilledSeconds,
                  made.totals.billedSeconds);
        EXPECT_EQ(amountOfRows, made.totals.knownAmount.value_or(0));
        EXPECT_EQ(static_cast<std::size_t>(lineCount), made.lines.size());
        EXPECT_EQ(linesOfSections, made.lines.size());
    }
}

} // namespace

} // namespace stintbook
