#pragma once

#include <algorithm>
#include <random>

#include "../ExportFixture.h"
#include "Base/Text.h"
#include "Export/Timesheet/TimesheetLayout.h"

namespace stintbook {

/// Every character is half as wide as its text is large.
class EvenMeasuring : public TextMeasuring {
public:
    MeasuredText wrapped(std::string_view text, const TextStyle& style, double width) override
    {
        const auto most = std::max<std::size_t>(1, static_cast<std::size_t>(width / (style.size / 2)));
        const auto characters = graphemes(text);
        MeasuredText measured;
        for (std::size_t from = 0; from < characters.size();) {
            auto to = std::min(from + most, characters.size());
            for (auto space = to; to < characters.size() && space > from; --space) {
                if (characters[space] == " ") {
                    to = space;
                    break;
                }
            }
            const std::string line(characters[from].begin(), characters[to - 1].end());
            measured.lines.push_back({line, widthOf(line, style)});
            from = to + (to < characters.size() && characters[to] == " " ? 1 : 0);
        }
        return measured;
    }
    double widthOf(std::string_view text, const TextStyle& style) override
    {
        return static_cast<double>(graphemes(text).size()) * style.size / 2;
    }
};

/// A timesheet's worth of work in Berlin, generated on the evening of 20 November 2026.
struct TimesheetFixture : ExportFixture {
    Instant generatedAt = calendar.instantOn({2026, 11, 20}, 18, 0, 0);

    ExportDocumentModel timesheet(const std::vector<ReviewedWorkItem>& items,
                                  ExportMode mode = ExportMode::detailed) const
    {
        auto wanted = request(mode);
        wanted.format = ExportFormat::timesheetPDF;
        return buildDocument(wanted, {ready(monday, items)}, directory, billing);
    }

    ReviewedWorkItem described(const Project& project, std::string description, double hours = 1) const
    {
        auto made = item(project, monday, 8, hours * 3600);
        made.description = std::move(description);
        return made;
    }
    std::vector<ReviewedWorkItem> rowsOf(const Project& project, int count) const
    {
        std::vector<ReviewedWorkItem> rows;
        for (int i = 0; i < count; ++i)
            rows.push_back(described(project, "Entry " + std::to_string(i)));
        return rows;
    }
};

} // namespace stintbook
