#include "Export/ExportSection.h"

#include <algorithm>
#include <tuple>

namespace stintbook {

std::vector<ExportSection> sections(const std::vector<ExportLine>& lines)
{
    const auto accountOf = [](const auto& what) {
        return std::tie(what.clientName, what.projectName, what.currencyCode);
    };
    std::vector<ExportSection> sections;
    for (const auto& line : lines) {
        const auto isItsAccount = [&](const auto& section) { return accountOf(section) == accountOf(line); };
        auto section = std::ranges::find_if(sections, isItsAccount);
        if (section == sections.end()) {
            sections.push_back({line.clientName, line.projectName, line.currencyCode, {}});
            section = std::prev(sections.end());
        }
        section->lines.push_back(line);
    }
    return sections;
}

} // namespace stintbook
