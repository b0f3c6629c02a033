#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Export/ExportLine.h"

namespace stintbook {

/// The lines of one account: what a timesheet and the text summary group by.
struct ExportSection {
    std::string clientName;
    std::string projectName;
    std::optional<std::string> currencyCode;
    std::vector<ExportLine> lines;

    friend bool operator==(const ExportSection&, const ExportSection&) = default;
};

/// In the order of their first lines, as are the lines in each.
std::vector<ExportSection> sections(const std::vector<ExportLine>& lines);

} // namespace stintbook
