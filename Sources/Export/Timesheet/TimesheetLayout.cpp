#include "Export/Timesheet/TimesheetLayout.h"

#include <algorithm>
#include <ranges>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "Export/ExportCalendar.h"
#include "Export/ExportRemarks.h"
#include "Export/ExportSection.h"
#include "Export/ExportTotals.h"
#include "Export/Timesheet/ColumnGeometry.h"
#include "Export/Timesheet/TextSetting.h"
#include "Export/Timesheet/TimesheetFlow.h"
#include "Export/Timesheet/TimesheetRowData.h"
#include "Export/Timesheet/TimesheetSpelling.h"

namespace stintbook {

namespace {

using Kind = TimesheetBlockKind;
using Span = TextSetting::Span;
constexpr auto semibold = TimesheetWeight::semibold;
constexpr auto secondary = TimesheetInk::secondary;

/// The period and the filters.
std::string subtitle(const ExportDocumentModel& document, const TimesheetSpelling& spelling)
{
    const auto dateOf = [&](const LocalDay& day) {
        return spelling.date(exportCalendar(day.timeZoneIdentifier).dateOf(day.start));
    };
    const auto first = dateOf(document.request.rangeStart);
    const auto last = dateOf(document.request.rangeEnd);
    std::vector<std::string> parts{first == last ? first : first + " – " + last};
    for (const auto& filter : {document.clientFilterName, document.projectFilterName}) {
        if (filter)
            parts.push_back(*filter);
    }
    return fmt::format("{}", fmt::join(parts, " · "));
}

/// A row's cells, set but not yet placed.
struct Row {
    std::string label;
    std::vector<TimesheetText> cells;
    std::size_t lineCount = 1;
};

double heightOfText(const TimesheetText& text)
{
    return static_cast<double>(text.lines.size()) * text.lineHeight;
}

/// At most `count` of a text's lines.
TimesheetText slice(const TimesheetText& text, std::size_t first, std::size_t count)
{
    auto part = text;
    const auto lines = text.lines | std::views::drop(first) | std::views::take(count);
    part.lines.assign(lines.begin(), lines.end());
    return part;
}

class Composition {
public:
    Composition(const ExportDocumentModel& document, const ExportRegion& region, Instant generatedAt,
                TextMeasuring& measuring, const TimesheetMetrics& metrics)
        : m_document(document)
        , m_region(region)
        , m_metrics(metrics)
        , m_setting(measuring)
        , m_spelling(document, region)
        , m_subtitle(subtitle(document, m_spelling))
        , m_content{metrics.margin, pageSize(region.paper).width - metrics.margin}
        , m_flow(region.paper, metrics, headerLine())
        , m_geometry(columnGeometry(timesheetColumns(document), m_flow.contentWidth(), metrics))
    {
        addTitleBlock(generatedAt);
        for (bool isFirst = true; const auto& section : sections(document.lines)) {
            m_flow.skip(isFirst ? 0 : metrics.sectionGap);
            addSection(section);
            isFirst = false;
        }
        m_flow.skip(metrics.documentTotalGap);
        addDocumentTotal();
        addNotes();
    }

    TimesheetLayout finished()
    {
        auto pages = m_flow.takePages();
        for (auto& page : pages)
            addFooter(page, pages.size());
        return {m_region.paper, title(), std::move(pages)};
    }

private:
    std::string title() const { return "Timesheet · " + m_subtitle; }

    TimesheetText headerLine() const
    {
        const double size = m_metrics.generatedSize;
        return m_setting.shortened(
            {.size = size, .ink = secondary, .lineHeight = TimesheetMetrics::lineHeight(size)}, title(),
            m_content);
    }

    /// A text over the whole width, as a block of its own.
    void addParagraph(Kind kind, const std::string& string, TimesheetText look)
    {
        if (look.lineHeight == 0)
            look.lineHeight = TimesheetMetrics::lineHeight(look.size);
        const auto text = m_setting.wrapped(std::move(look), string, m_content);
        m_flow.startPageUnlessFits(std::min(heightOfText(text), m_flow.roomOfANewPage()));
        for (std::size_t done = 0; done < text.lines.size();) {
            if (done > 0)
                m_flow.startPage();
            auto part = slice(text, done, m_flow.linesThatFit(text.lineHeight));
            done += part.lines.size();
            part.top = m_flow.place(kind, string, heightOfText(part));
            m_flow.add(std::move(part));
        }
    }

    void addTitleBlock(Instant generatedAt)
    {
        const auto calendar = exportCalendar(m_document.request.rangeEnd.timeZoneIdentifier);
        addParagraph(Kind::title, "Timesheet", {.size = m_metrics.titleSize, .weight = semibold});
        addParagraph(Kind::subtitle, m_subtitle, {.size = m_metrics.subtitleSize, .ink = secondary});
        addParagraph(Kind::generated, "Generated " + m_spelling.date(calendar.dateOf(generatedAt)),
                     {.size = m_metrics.generatedSize, .ink = secondary});
        m_flow.skip(m_metrics.titleBlockGap);
    }

    void addSection(const ExportSection& section)
    {
        std::vector<Row> rows;
        for (const auto& data : timesheetRows(section, m_document.request, m_spelling))
            rows.push_back(set(data));

        const auto heading = accountName(section.clientName, section.projectName);
        const TimesheetText look{.size = m_metrics.sectionHeadingSize,
                                 .weight = semibold,
                                 .lineHeight = m_metrics.sectionHeadingHeight};
        const double start = heightOfText(m_setting.wrapped(look, heading, m_content))
            + m_metrics.columnHeaderHeight + roomFor(rows.front(), below(rows, 0));
        m_flow.startPageUnlessFits(std::min(start, m_flow.roomOfANewPage()));
        addParagraph(Kind::sectionHeading, heading, look);
        addColumnHeader();
        for (std::size_t i = 0; i < rows.size(); ++i)
            add(rows[i], below(rows, i));
        addSectionTotal(section);
    }

    void addColumnHeader()
    {
        std::string label;
        std::vector<TimesheetText> titles;
        for (std::size_t i = 0; i < m_geometry.columns.size(); ++i) {
            const auto& column = m_geometry.columns[i];
            label += (i == 0 ? "" : "\t") + column.title;
            titles.push_back(m_setting.figure({.size = m_metrics.columnHeaderSize,
                                               .ink = secondary,
                                               .lineHeight = m_metrics.columnHeaderHeight},
                                              column.title, m_geometry.textSpan(i), column.align));
        }
        addAll(std::move(titles),
               m_flow.place(Kind::columnHeader, std::move(label), m_metrics.columnHeaderHeight));
        m_flow.addRule();
    }

    Row set(const TimesheetRowData& data) const
    {
        Row row;
        for (std::size_t i = 0; i < m_geometry.columns.size(); ++i) {
            const auto& column = m_geometry.columns[i];
            const auto string = cellText(data, column.cell, m_spelling);
            const auto span = m_geometry.textSpan(i);
            const TimesheetText look{
                .size = m_metrics.rowSize, .tabular = column.tabular, .lineHeight = m_metrics.rowLineHeight};
            row.label += (i == 0 ? "" : "\t") + string;
            row.cells.push_back(column.isFigure() ? m_setting.figure(look, string, span, column.align)
                                                  : m_setting.wrappedFromItsStart(look, string, span));
            row.lineCount = std::max(row.lineCount, row.cells.back().lines.size());
        }
        return row;
    }

    double heightOf(std::size_t lineCount) const
    {
        return static_cast<double>(lineCount) * m_metrics.rowLineHeight + 2 * m_metrics.rowPadding;
    }
    double heightOf(const Row& row) const { return heightOf(row.lineCount); }

    /// What keeps with a row: the total with the last one.
    double below(const std::vector<Row>& rows, std::size_t index) const
    {
        return index + 1 == rows.size() ? m_metrics.totalHeight + m_metrics.ruleGap : 0;
    }

    /// What must fit where a row begins: all of it with what keeps with it, or a few lines of a row that runs
    /// over the end of a page wherever it begins.
    double roomFor(const Row& row, double below) const
    {
        constexpr std::size_t fewestLinesOfAPart = 2;
        // With the heading above it and the total below it, whether it has them or not.
        const double mostOfAPage = m_flow.roomOfANewPage() - m_metrics.sectionHeadingHeight
            - m_metrics.columnHeaderHeight - m_metrics.totalHeight - m_metrics.ruleGap;
        return heightOf(row) > mostOfAPage ? heightOf(fewestLinesOfAPart) : heightOf(row) + below;
    }

    void add(const Row& row, double below)
    {
        if (m_flow.startPageUnlessFits(roomFor(row, below)))
            addColumnHeader();
        for (std::size_t done = 0; done < row.lineCount;) {
            if (done > 0) {
                m_flow.startPage();
                addColumnHeader();
            }
            const auto count = std::min(row.lineCount - done,
                                        m_flow.linesThatFit(m_metrics.rowLineHeight, m_metrics.rowPadding));
            const double top = m_flow.place(Kind::row, row.label, heightOf(count)) + m_metrics.rowPadding;
            std::vector<TimesheetText> cells;
            for (const auto& cell : row.cells)
                cells.push_back(slice(cell, done, count));
            addAll(std::move(cells), top);
            done += count;
        }
    }

    void addSectionTotal(const ExportSection& section)
    {
        const auto sums = totals(section.lines, m_document.currency);
        const bool isBillable = sums.amount || sums.unpricedLineCount > 0;
        TimesheetRowData data{.duration = hoursOf(sums.billedSeconds)};
        if (isBillable)
            data.amountText = sums.amount ? m_spelling.amount(*sums.amount) : TimesheetSpelling::unavailable;

        const TimesheetText look{
            .size = m_metrics.totalSize, .weight = semibold, .lineHeight = m_metrics.totalHeight};
        std::string label = "Total";
        std::vector<TimesheetText> texts{m_setting.wrapped(look, label, m_geometry.labelSpan())};
        for (std::size_t i = 0; i < m_geometry.columns.size(); ++i) {
            const auto& column = m_geometry.columns[i];
            if (column.align != TimesheetAlign::right)
                continue;
            const auto string = cellText(data, column.cell, m_spelling);
            auto figure = look;
            figure.tabular = column.tabular;
            texts.push_back(
                m_setting.figure(std::move(figure), string, m_geometry.textSpan(i), column.align));
            label += "\t" + string;
        }
        if (m_flow.startPageUnlessFits(m_metrics.totalHeight + m_metrics.ruleGap))
            addColumnHeader();
        addAll(std::move(texts), m_flow.place(Kind::sectionTotal, std::move(label), m_metrics.totalHeight));
        m_flow.skip(m_metrics.ruleGap);
        m_flow.addRule();
    }

    void addDocumentTotal()
    {
        const auto& sums = m_document.totals;
        const TimesheetText look{.size = m_metrics.totalSize,
                                 .weight = semibold,
                                 .tabular = true,
                                 .lineHeight = m_metrics.totalHeight};
        const double middle = (m_content.left + m_content.right) / 2;
        std::string label = "Total: " + m_spelling.hours(hoursOf(sums.billedSeconds));
        std::vector<TimesheetText> texts{
            m_setting.figure(look, label, {m_content.left, middle}, TimesheetAlign::left)};
        if (m_document.request.fields.includesRateAndAmount) {
            const auto amount = amountText(sums, m_document.currency, m_region.moneyLocale);
            texts.push_back(m_setting.figure(look, amount, {middle, m_content.right}, TimesheetAlign::right));
            label += "\t" + amount;
        }
        addAll(std::move(texts), m_flow.place(Kind::documentTotal, std::move(label), m_metrics.totalHeight));
    }

    void addNotes()
    {
        std::vector<std::string> notes;
        if (m_document.request.fields.includesRateAndAmount)
            notes = amountRemarks(m_document.totals, m_document.currency, m_region.moneyLocale);
        if (const auto note = roundingNote(m_document.lines))
            notes.push_back(*note);
        for (const auto& note : notes)
            addParagraph(Kind::note, note, {.size = m_metrics.generatedSize, .ink = secondary});
    }

    void addFooter(TimesheetPage& page, std::size_t pageCount) const
    {
        const double height = TimesheetMetrics::lineHeight(m_metrics.footerSize);
        const double top = m_flow.bottomLimit() + m_metrics.footerSpace - height;
        auto label = fmt::format("Page {} of {}", page.number, pageCount);
        page.texts.push_back(m_setting.figure({.size = m_metrics.footerSize,
                                               .ink = secondary,
                                               .tabular = true,
                                               .top = top,
                                               .lineHeight = height},
                                              label, m_content, TimesheetAlign::right));
        page.blocks.push_back({Kind::footer, page.number, top, height, std::move(label)});
    }

    void addAll(std::vector<TimesheetText> texts, double top)
    {
        for (auto& text : texts) {
            if (text.lines.empty())
                continue;
            text.top = top;
            m_flow.add(std::move(text));
        }
    }

    const ExportDocumentModel& m_document;
    const ExportRegion& m_region;
    TimesheetMetrics m_metrics;
    TextSetting m_setting;
    TimesheetSpelling m_spelling;
    std::string m_subtitle;
    Span m_content;
    TimesheetFlow m_flow;
    ColumnGeometry m_geometry;
};

} // namespace

TimesheetLayout layoutTimesheet(const ExportDocumentModel& document, const ExportRegion& region,
                                Instant generatedAt, TextMeasuring& measuring,
                                const TimesheetMetrics& metrics)
{
    return Composition(document, region, generatedAt, measuring, metrics).finished();
}

} // namespace stintbook
