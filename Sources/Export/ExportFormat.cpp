#include "Export/ExportFormat.h"

namespace stintbook {

ExportFormat exportFormat(ExportFormatKind kind, ExportMode mode)
{
    switch (kind) {
    case ExportFormatKind::csv:
        return mode == ExportMode::detailed ? ExportFormat::detailedCSV : ExportFormat::summarizedCSV;
    case ExportFormatKind::pdf:
        return ExportFormat::timesheetPDF;
    case ExportFormatKind::copySummary:
        break;
    }
    return ExportFormat::copySummary;
}

} // namespace stintbook
