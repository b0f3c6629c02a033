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
        MeasuredText measured;
        for (auto rest = codePoints(text); !rest.empty();) {
            auto end = std::min(most, rest.size());
            if (const auto space = rest.rfind(U' ', end);
                end < rest.size() && space != rest.npos && space > 0)
                end = space;
            std::string line;
            for (const char32_t character : rest.substr(0, end))
                line += utf8(character);
            measured.lines.push_back({line, widthOf(line, style)});
            rest.erase(0, std::min(rest.size(), end + (end < rest.size() && rest[end] == U' ' ? 1 : 0)));
        }
        return measured;
    }
    double widthOf(std::string_view text, const TextStyle& style) override
    {
        return static_cast<double>(codePoints(text).size()) * style.size / 2;
    }

private:
    static std::string utf8(char32_t character)
    {
        const auto low = [](char32_t bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
        if (character < 0x80)
            return {static_cast<char>(character)};
        if (character < 0x800)
            return {static_cast<char>(0xC0 | (character >> 6)), low(character)};
        return {static_cast<char>(0xE0 | (character >> 12)), low(character >> 6), low(character)};
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
