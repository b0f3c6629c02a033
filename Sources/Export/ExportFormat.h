#pragma once

#include <array>
#include <string_view>

#include "Base/RawValue.h"

namespace stintbook {

enum class ExportMode {
    /// One row a reviewed item.
    detailed,
    /// One row a group of equal terms.
    summarized,
};

template <> struct RawValues<ExportMode> {
    static constexpr std::array table{
        std::pair{ExportMode::detailed, std::string_view("detailed")},
        std::pair{ExportMode::summarized, std::string_view("summarized")},
    };
};

enum class ExportFormat { detailedCSV, summarizedCSV, timesheetPDF, copySummary };

template <> struct RawValues<ExportFormat> {
    static constexpr std::array table{
        std::pair{ExportFormat::detailedCSV, std::string_view("detailed-csv")},
        std::pair{ExportFormat::summarizedCSV, std::string_view("summarized-csv")},
        std::pair{ExportFormat::timesheetPDF, std::string_view("timesheet-pdf")},
        std::pair{ExportFormat::copySummary, std::string_view("copy-summary")},
    };
};

/// What the user picks.
enum class ExportFormatKind { csv, pdf, copySummary };

ExportFormat exportFormat(ExportFormatKind kind, ExportMode mode);

} // namespace stintbook
