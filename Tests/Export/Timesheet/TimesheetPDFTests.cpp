// The file as a reader of PDF sees it.

#include <cstdio>
#include <regex>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Export/Timesheet/PangoTypesetter.h"
#include "Export/Timesheet/TimesheetPDF.h"
#include "Export/Timesheet/TimesheetPicture.h"
#include "Support/TemporaryDirectory.h"
#include "TimesheetFixture.h"

namespace stintbook {

namespace {

using testing::HasSubstr;
using testing::Not;

struct Word {
    int page = 0;
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    std::string text;
};

struct TimesheetPDFTest : testing::Test, TimesheetFixture {
    TemporaryDirectory directory;
    ExportRegion region{"en_US", "en_US", TimesheetPaper::a4};

    void write(const ExportDocumentModel& document)
    {
        const auto bytes = timesheetPDF(document, region, generatedAt);
        ASSERT_TRUE(bytes);
        writeFile(directory / "timesheet.pdf", *bytes);
    }

    /// What a tool of poppler prints about the file.
    std::string told(const std::string& tool, const std::string& more = "") const
    {
        const auto command = tool + " '" + (directory / "timesheet.pdf").string() + "' " + more;
        FILE* const pipe = popen(command.c_str(), "r");
        std::string text;
        for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe))
            text += static_cast<char>(c);
        EXPECT_EQ(pclose(pipe), 0) << command;
        return text;
    }

    std::vector<Word> words() const
    {
        const std::regex part(
            R"re(<page |<word xMin="(.*?)" yMin="(.*?)" xMax="(.*?)" yMax="(.*?)">(.*?)</word>)re");
        const auto text = told("pdftotext -bbox", "-");
        std::vector<Word> words;
        int page = 0;
        for (std::sregex_iterator match(text.begin(), text.end(), part), end; match != end; ++match) {
            const auto number = [&](int group) { return std::stod((*match)[group]); };
            if (match->str() == "<page ")
                ++page;
            else
                words.push_back({page, number(1), number(2), number(3), number(4), (*match)[5]});
        }
        return words;
    }
};

TEST_F(TimesheetPDFTest, ShowsEveryWordWhereTheLayoutPutsIt)
{
    auto items = rowsOf(website, 50);
    items.push_back(described(support, "A description of several words that has to be wrapped at its width"));
    items.push_back(described(support, std::string(80, 'w')));
    for (const auto paper : {TimesheetPaper::a4, TimesheetPaper::usLetter}) {
        region.paper = paper;
        const auto document = timesheet(items);
        write(document);
        const auto shown = words();
        PangoTypesetter typesetter("en_US");
        for (const auto& page : layoutTimesheet(document, region, generatedAt, typesetter).pages) {
            for (const auto& text : page.texts) {
                for (std::size_t i = 0; i < text.lines.size(); ++i) {
                    const auto& [string, x, width] = text.lines[i];
                    const double top = text.top + static_cast<double>(i) * text.lineHeight;
                    const auto isInLine = [&](const Word& word) {
                        const double middle = (word.top + word.bottom) / 2;
                        return word.page == page.number && middle > top && middle < top + text.lineHeight;
                    };
                    EXPECT_TRUE(std::ranges::any_of(shown, [&](const Word& word) {
                        return isInLine(word) && std::abs(word.left - x) < 0.2
                            && string.starts_with(word.text);
                    })) << string;
                    EXPECT_TRUE(std::ranges::any_of(shown, [&](const Word& word) {
                        return isInLine(word) && std::abs(word.right - x - width) < 0.5
                            && string.ends_with(word.text);
                    })) << string;
                }
            }
        }
        EXPECT_THAT(told("pdfinfo"),
                    HasSubstr(paper == TimesheetPaper::a4 ? "595.28 x 841.89" : "612 x 792"));
    }
}

TEST_F(TimesheetPDFTest, HoldsTextOfEveryScriptThatCanBeFoundAndCopied)
{
    const std::vector<std::string> names{
        "Ελληνική Εταιρεία", "Ромашка Сайт", "株式会社日本商事", "한국어", "שלום", "شركة", "Bolt & Söhne"};
    std::vector<ReviewedWorkItem> items;
    for (const auto& name : names)
        items.push_back(described(support, name));
    items.push_back(described(support, "Launch 🚀"));
    write(timesheet(items));
    const auto text = told("pdftotext", "-");
    for (const auto& name : names)
        EXPECT_THAT(text, HasSubstr(name));

    std::istringstream fonts(told("pdffonts"));
    std::string line;
    int count = -2;
    while (std::getline(fonts, line)) {
        if (++count > 0) {
            EXPECT_TRUE(std::regex_search(line, std::regex(R"( yes (yes|no)\s+yes +\d+ +\d+$)"))) << line;
        }
    }
    EXPECT_GT(count, 3);
    EXPECT_THAT(told("pdffonts"), HasSubstr("+LiberationSans-Bold "));
}

TEST_F(TimesheetPDFTest, TellsItsTitleAndInstantAndNobodysName)
{
    auto document = timesheet({described(website, "Kick-off")});
    document.clientFilterName = "Acme";
    write(document);
    const auto told = this->told("env TZ=UTC pdfinfo -isodates");
    EXPECT_THAT(told, HasSubstr("Timesheet · Nov 16, 2026 – Nov 17, 2026 · Acme\n"));
    EXPECT_THAT(told, HasSubstr("CreationDate:    2026-11-20T17:00:00Z\n"));
    EXPECT_THAT(told, Not(HasSubstr("Author")));
}

TEST_F(TimesheetPDFTest, IsTheSameFileForTheSameDocumentRegionAndInstant)
{
    const auto document =
        timesheet({described(website, "Kick-off 🚀 שלום 日本"), described(support, "Call")});
    const auto first = timesheetPDF(document, region, generatedAt).value();
    EXPECT_EQ(timesheetPDF(document, region, generatedAt).value(), first);
    EXPECT_NE(timesheetPDF(document, region, generatedAt + Seconds{1}).value(), first);
}

TEST_F(TimesheetPDFTest, TakesTextsOfAnyBytes)
{
    write(timesheet({described(website, std::string("nul\0 bell\a tab\t \xC2\x85 \xff\xfe broken", 27)),
                     described(website, "first\r\nsecond\rthird\nfourth"), described(website, "   ")}));
    const auto text = told("pdftotext -layout", "-");
    EXPECT_THAT(text, HasSubstr("nul"));
    for (const std::string line : {"first", "second", "third", "fourth"})
        EXPECT_TRUE(std::regex_search(text, std::regex(line + "( .*)?\n"))) << line;
}

TEST_F(TimesheetPDFTest, ShowsEachPageAsThePictureThatTheFileHas)
{
    const auto document = timesheet(rowsOf(website, 120));
    write(document);
    const auto layout = timesheetLayout(document, region, generatedAt);
    ASSERT_TRUE(layout);
    EXPECT_THAT(told("pdfinfo"),
                testing::ContainsRegex("Pages: +" + std::to_string(layout->pages.size()) + "\n"));

    constexpr int width = 595;
    const auto picture = timesheetPicture(layout->pages.back(), region, width);
    ASSERT_TRUE(picture);
    EXPECT_NEAR(picture->height, width * 297.0 / 210, 1);
    const auto isInked = [&](const Word& word) {
        for (int y = static_cast<int>(word.top); y < static_cast<int>(word.bottom); ++y) {
            for (int x = static_cast<int>(word.left); x < static_cast<int>(word.right); ++x) {
                if (picture->pixels[static_cast<std::size_t>(y * width + x)] != 0xffffffff)
                    return true;
            }
        }
        return false;
    };
    EXPECT_FALSE(isInked({.left = 0, .top = 0, .right = width, .bottom = 40}));
    for (const auto& word : words()) {
        if (word.page == static_cast<int>(layout->pages.size())) {
            EXPECT_TRUE(isInked(word)) << word.text;
        }
    }
}

} // namespace

} // namespace stintbook
