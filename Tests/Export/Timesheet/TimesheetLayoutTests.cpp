#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Export/Timesheet/ColumnGeometry.h"
#include "TimesheetFixture.h"

namespace stintbook {

namespace {

using Kind = TimesheetBlockKind;
using testing::ElementsAre;

struct TimesheetLayoutTest : testing::Test, TimesheetFixture {
    EvenMeasuring measuring;

    TimesheetLayout layout(const ExportDocumentModel& document, TimesheetPaper paper = TimesheetPaper::a4)
    {
        return layoutTimesheet(document, {"en_US", "en_US", paper}, generatedAt, measuring);
    }
};

/// "row 102.5 16": kind, top, height.
std::string shown(const TimesheetBlock& block)
{
    std::ostringstream text;
    text << rawValue(block.kind) << ' ' << block.top << ' ' << block.height;
    return text.str();
}

std::vector<std::string> shownBlocks(const TimesheetPage& page)
{
    std::vector<std::string> texts;
    std::ranges::transform(page.blocks, std::back_inserter(texts), shown);
    return texts;
}

const TimesheetText* textOf(const TimesheetPage& page, std::string_view string)
{
    for (const auto& text : page.texts) {
        if (text.lines.front().string == string)
            return &text;
    }
    return nullptr;
}

std::vector<TimesheetBlock> blocks(const TimesheetLayout& layout, Kind kind)
{
    std::vector<TimesheetBlock> found;
    for (const auto& page : layout.pages)
        std::ranges::copy_if(page.blocks, std::back_inserter(found),
                             [&](const auto& block) { return block.kind == kind; });
    return found;
}

std::vector<std::string> titlesOf(const ExportDocumentModel& document)
{
    std::vector<std::string> titles;
    for (const auto& column : timesheetColumns(document))
        titles.push_back(column.title);
    return titles;
}

TEST_F(TimesheetLayoutTest, StacksBlocksByTheirHeightsAndGaps)
{
    const auto made = layout(timesheet({described(website, "Kick-off"), described(support, "Call")}));
    ASSERT_EQ(made.pages.size(), 1U);
    const auto& page = made.pages.front();
    EXPECT_THAT(shownBlocks(page),
                ElementsAre("title 48 29.7", "subtitle 77.7 14.85", "generated 92.55 12.15",
                            "sectionHeading 114.7 17", "columnHeader 131.7 13", "row 144.7 16",
                            "sectionTotal 160.7 18", "sectionHeading 198.7 17", "columnHeader 215.7 13",
                            "row 228.7 28", "sectionTotal 256.7 18", "documentTotal 304.7 18",
                            "note 322.7 12.15", "note 334.85 12.15", "note 347 12.15",
                            "footer 781.74 12.15"));
    ASSERT_EQ(page.rules.size(), 4U);
    EXPECT_DOUBLE_EQ(page.rules[0].top, 144.7);
    EXPECT_DOUBLE_EQ(page.rules[1].top, 186.7);
    EXPECT_DOUBLE_EQ(page.rules[1].x, 48);
    EXPECT_DOUBLE_EQ(page.rules[1].width, 499.28);

    const auto& title = *textOf(page, "Timesheet");
    EXPECT_EQ(title.size, 22);
    EXPECT_EQ(title.weight, TimesheetWeight::semibold);
    EXPECT_EQ(textOf(page, "Nov 16, 2026 – Nov 17, 2026")->ink, TimesheetInk::secondary);
    EXPECT_NE(textOf(page, "Generated Nov 20, 2026"), nullptr);
    EXPECT_DOUBLE_EQ(textOf(page, "Kick-off")->top, 146.7);
    EXPECT_NE(textOf(page, "Page 1 of 1"), nullptr);

    // A figure too wide for its column is set smaller.
    billing.clients[acme.id] = {.hourlyRate = decimal("123456.78")};
    const auto dear = layout(timesheet({described(website, "Dear", 12)})).pages.front();
    EXPECT_NEAR(textOf(dear, "€1,481,481.36")->size, 10 * 62.0 / 65, 0.02);
}

TEST_F(TimesheetLayoutTest, GivesTheDescriptionWhatTheOtherColumnsLeaveOnEachPaper)
{
    const auto document = timesheet({described(website, "Kick-off", 1.5), described(support, "Call")});
    for (const auto& [paper, width] :
         {std::pair{TimesheetPaper::a4, 499.28}, std::pair{TimesheetPaper::usLetter, 516.0}}) {
        const auto geometry = columnGeometry(timesheetColumns(document), width, {});
        EXPECT_THAT(geometry.widths, ElementsAre(64, 110, testing::DoubleEq(width - 348), 52, 56, 66));
        EXPECT_THAT(geometry.origins,
                    ElementsAre(48, 112, 222, testing::DoubleEq(width - 126), testing::DoubleEq(width - 74),
                                testing::DoubleEq(width - 18)));
        const auto page = layout(document, paper).pages.front();
        EXPECT_DOUBLE_EQ(page.rules.front().width, width);
        const auto& amount = textOf(page, "€150.00")->lines.front();
        EXPECT_DOUBLE_EQ(amount.x + amount.boxWidth, 48 + width);
    }
    EXPECT_EQ(paperOfLocale("fr_CA"), TimesheetPaper::usLetter);
    EXPECT_EQ(paperOfLocale("en_GB"), TimesheetPaper::a4);
}

TEST_F(TimesheetLayoutTest, HasTheColumnsOfItsFieldsAndTheClientsOnlyWhenThereAreSeveral)
{
    const auto withFields = [](ExportDocumentModel document, const char* tokens) {
        document.request.fields = ExportFieldSet::parse(tokens)->normalised(document.request.mode);
        return document;
    };
    const auto several = timesheet({described(website, "a"), described(support, "b")});
    const auto one = timesheet({described(website, "a")});
    EXPECT_THAT(titlesOf(several),
                ElementsAre("Date", "Client / Project", "Description", "Duration", "Rate", "Amount"));
    EXPECT_THAT(titlesOf(withFields(several, "client")), ElementsAre("Date", "Client", "Duration"));
    EXPECT_THAT(titlesOf(withFields(several, "project")), ElementsAre("Date", "Project", "Duration"));
    EXPECT_THAT(titlesOf(one), ElementsAre("Date", "Project", "Description", "Duration", "Rate", "Amount"));
    EXPECT_THAT(titlesOf(timesheet({described(website, "a")}, ExportMode::summarized)),
                ElementsAre("Project", "Duration", "Rate", "Amount"));

    const auto page = layout(withFields(several, "client")).pages.front();
    EXPECT_EQ(textOf(page, "Acme")->lines.front().x, 112);
    EXPECT_EQ(textOf(page, "Rate"), nullptr);
    // Without a description the figures still end at the right margin.
    const auto& hours = textOf(page, "1.00\u00a0h")->lines.front();
    EXPECT_DOUBLE_EQ(hours.x + hours.boxWidth, 547.28);
    // Amounts that are not shown need no explanation.
    EXPECT_THAT(blocks(layout(withFields(several, "client")), Kind::note), testing::SizeIs(1));
}

TEST_F(TimesheetLayoutTest, MovesARowThatWouldCrossTheLimitWholeUnderTheRunningHeader)
{
    // From 144.7 rows of 16 go to 773.89 on A4 and to 724 on US Letter: 39 and 36 of them.
    const auto document = timesheet(rowsOf(website, 60));
    for (const auto& [paper, rowsOfTheFirst] :
         {std::pair{TimesheetPaper::a4, 39}, std::pair{TimesheetPaper::usLetter, 36}}) {
        const auto made = layout(document, paper);
        ASSERT_EQ(made.pages.size(), 2U);
        const auto isRow = [](const TimesheetBlock& block) { return block.kind == Kind::row; };
        EXPECT_EQ(std::ranges::count_if(made.pages[0].blocks, isRow), rowsOfTheFirst);
        EXPECT_THAT(
            shownBlocks(made.pages[1]),
            testing::IsSupersetOf({"runningHeader 48 12.15", "columnHeader 70.15 13", "row 83.15 16"}));
        EXPECT_NE(textOf(made.pages[1], "Timesheet · Nov 16, 2026 – Nov 17, 2026"), nullptr);
        EXPECT_NE(textOf(made.pages[1], "Page 2 of 2"), nullptr);
    }
}

TEST_F(TimesheetLayoutTest, LeavesNoHeadingWithoutARowAndNoTotalAlone)
{
    const auto expectKeptTogether = [this](const std::vector<ReviewedWorkItem>& items) {
        const auto made = layout(timesheet(items));
        for (const auto& page : made.pages) {
            const auto& last = page.blocks[page.blocks.size() - 2].kind;
            EXPECT_TRUE(last != Kind::sectionHeading && last != Kind::columnHeader) << page.number;
            for (std::size_t i = 1; i < page.blocks.size(); ++i) {
                if (page.blocks[i].kind == Kind::sectionTotal) {
                    EXPECT_EQ(page.blocks[i - 1].kind, Kind::row) << page.number;
                }
            }
        }
        return made;
    };
    for (int count = 30; count < 42; ++count) {
        auto items = rowsOf(website, count);
        items.push_back(described(support, "Call"));
        expectKeptTogether(items);
    }
    // Rows of about the height of a page.
    for (std::size_t length = 1000; length < 2600; length += 20)
        expectKeptTogether({described(website, "Call"), described(support, std::string(length, 'a'))});

    std::vector<Project> projects;
    std::vector<ReviewedWorkItem> items;
    for (int i = 0; i < 200; ++i) {
        projects.push_back(
            {.id = ProjectID::random(), .clientID = acme.id, .name = std::to_string(1000 + i)});
        items.push_back(described(projects.back(), "Call"));
    }
    directory = AssignmentDirectory({acme}, projects);
    const auto headings = blocks(expectKeptTogether(items), Kind::sectionHeading);
    ASSERT_EQ(headings.size(), projects.size());
    for (std::size_t i = 0; i < projects.size(); ++i)
        EXPECT_TRUE(headings[i].label.ends_with(projects[i].name));
}

TEST_F(TimesheetLayoutTest, SaysWhatIsMissingAndAddsUpWhatIsKnown)
{
    auto unbilled = described(support, "Free", 0.1);
    unbilled.assignment.isBillable = false;
    auto made = layout(
        timesheet({described(website, "Priced", 1.5), described(support, "Unpriced", 0.01), unbilled}));
    EXPECT_EQ(blocks(made, Kind::note).front().label, "Known subtotal: €150.00");
    EXPECT_EQ(blocks(made, Kind::documentTotal).front().label, "Total: 1.61\u00a0h\t— (rate not set)");
    EXPECT_EQ(blocks(made, Kind::sectionTotal).back().label, "Total\t0.11\u00a0h\t\t—");
    EXPECT_TRUE(blocks(made, Kind::row).back().label.ends_with("Free\t0.10\u00a0h\t\t"));

    billing.settings.currency = std::nullopt;
    made = layout(timesheet({described(website, "Priced", 0.00123)}));
    EXPECT_THAT(blocks(made, Kind::note), testing::SizeIs(2));
    EXPECT_TRUE(blocks(made, Kind::row).front().label.ends_with("0.0011\u00a0h\t100.00\t—"));
    EXPECT_EQ(blocks(made, Kind::documentTotal).front().label, "Total: 0.0011\u00a0h\t— (currency not set)");
}

TEST_F(TimesheetLayoutTest, KeepsEveryTextInItsPlaceAndOrderWhateverItIsGiven)
{
    std::mt19937 random(20261120);
    for (int run = 0; run < 60; ++run) {
        const auto wordOf = [&](std::size_t most) {
            return std::string(1 + random() % most, 'a' + random() % 26);
        };
        acme.name = wordOf(run % 3 == 0 ? 400 : 20);
        directory = AssignmentDirectory({acme, bolt}, {website, support});
        std::vector<ReviewedWorkItem> items;
        for (auto count = 1 + random() % 120; count > 0; --count) {
            std::string text;
            for (auto words = random() % (random() % 40 == 0 ? 1500 : 30); words > 0; --words)
                text += wordOf(random() % 30 == 0 ? 90 : 12) + ' ';
            items.push_back(described(random() % 2 == 0 ? website : support, trimmed(text),
                                      static_cast<double>(random() % 100)));
        }
        const auto document = timesheet(items, run % 4 == 3 ? ExportMode::summarized : ExportMode::detailed);
        const auto paper = run % 2 == 0 ? TimesheetPaper::a4 : TimesheetPaper::usLetter;
        const auto made = layout(document, paper);
        const double right = pageSize(paper).width - 48;
        const auto geometry = columnGeometry(timesheetColumns(document), right - 48, {});

        std::vector<std::string> set;
        for (const auto& page : made.pages) {
            EXPECT_EQ(page.number, &page - made.pages.data() + 1);
            double cursor = 48;
            for (const auto& block : page.blocks) {
                EXPECT_GE(block.top, cursor - 1e-6) << run << shown(block);
                cursor = block.bottom();
                EXPECT_LE(cursor, pageSize(paper).height - (block.kind == Kind::footer ? 48 : 68) + 1e-6)
                    << run << shown(block);
            }
            EXPECT_EQ(page.blocks.front().kind, page.number == 1 ? Kind::title : Kind::runningHeader);
            for (const auto& text : page.texts) {
                const auto holds = [&](const TimesheetBlock& block) {
                    return text.top >= block.top - 1e-6
                        && text.top + static_cast<double>(text.lines.size()) * text.lineHeight
                        <= block.bottom() + 1e-6;
                };
                const auto block = std::ranges::find_if(page.blocks, holds);
                ASSERT_NE(block, page.blocks.end()) << run << text.lines.front().string;
                for (const auto& line : text.lines) {
                    EXPECT_GE(line.x, 48);
                    EXPECT_LE(line.x + line.boxWidth, right + 1e-6);
                    if (block->kind != Kind::row)
                        continue;
                    const auto after = std::ranges::upper_bound(geometry.origins, line.x + 1e-6);
                    const auto column = static_cast<std::size_t>(after - geometry.origins.begin() - 1);
                    EXPECT_LE(line.x + line.boxWidth, geometry.textSpan(column).right + 1e-6) << line.string;
                    if (geometry.columns[column].cell == TimesheetCell::description)
                        set.push_back(line.string);
                }
            }
        }
        std::string expected;
        for (const auto& section : sections(document.lines)) {
            for (const auto& line : section.lines)
                expected +=
                    document.request.mode == ExportMode::detailed ? line.description.value_or("") : "";
        }
        std::string found;
        for (const auto& line : set)
            found += line;
        std::erase(expected, ' ');
        std::erase(found, ' ');
        EXPECT_EQ(found, expected) << run;
    }
}

} // namespace

} // namespace stintbook
