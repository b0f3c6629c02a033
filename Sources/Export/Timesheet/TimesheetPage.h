#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "Base/RawValue.h"
#include "Export/Timesheet/TimesheetText.h"

namespace stintbook {

/// A thin horizontal line.
struct TimesheetRule {
    double top = 0;
    double x = 0;
    double width = 0;

    friend bool operator==(const TimesheetRule&, const TimesheetRule&) = default;
};

enum class TimesheetBlockKind {
    title,
    subtitle,
    generated,
    runningHeader,
    sectionHeading,
    columnHeader,
    row,
    sectionTotal,
    documentTotal,
    note,
    footer,
};

template <> struct RawValues<TimesheetBlockKind> {
    static constexpr std::array table{
        std::pair{TimesheetBlockKind::title, std::string_view("title")},
        std::pair{TimesheetBlockKind::subtitle, std::string_view("subtitle")},
        std::pair{TimesheetBlockKind::generated, std::string_view("generated")},
        std::pair{TimesheetBlockKind::runningHeader, std::string_view("runningHeader")},
        std::pair{TimesheetBlockKind::sectionHeading, std::string_view("sectionHeading")},
        std::pair{TimesheetBlockKind::columnHeader, std::string_view("columnHeader")},
        std::pair{TimesheetBlockKind::row, std::string_view("row")},
        std::pair{TimesheetBlockKind::sectionTotal, std::string_view("sectionTotal")},
        std::pair{TimesheetBlockKind::documentTotal, std::string_view("documentTotal")},
        std::pair{TimesheetBlockKind::note, std::string_view("note")},
        std::pair{TimesheetBlockKind::footer, std::string_view("footer")},
    };
};

/// What a stretch of a page is for. A row too tall for a page is a block on each page that it runs over.
struct TimesheetBlock {
    TimesheetBlockKind kind = TimesheetBlockKind::row;
    /// From 1.
    int page = 1;
    double top = 0;
    double height = 0;
    /// Its texts before they were wrapped, joined by tabs.
    std::string label;

    double bottom() const { return top + height; }

    friend bool operator==(const TimesheetBlock&, const TimesheetBlock&) = default;
};

/// All that is drawn on one page, in points from its upper left corner, downwards.
struct TimesheetPage {
    /// From 1.
    int number = 1;
    std::vector<TimesheetText> texts;
    std::vector<TimesheetRule> rules;
    std::vector<TimesheetBlock> blocks;

    friend bool operator==(const TimesheetPage&, const TimesheetPage&) = default;
};

} // namespace stintbook
