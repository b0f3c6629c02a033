#pragma once

#include <vector>

#include "App/ExportDesk.h"
#include "CommandLine/Session.h"

/// Exports as people read them in a terminal.
namespace stintbook {

void printPreview(Session& session, const CalendarContext& calendar, const ExportPreview& preview);
/// On stderr: days that were left out, and work that was recorded since a day was marked ready.
void printRemarks(Session& session, const ExportPreview& preview);
/// The receipt of a delivered export, as JSON where that is asked for.
void print(Session& session, const ExportReceipt& receipt);
void printHistory(Session& session, const std::vector<ExportSnapshot>& snapshots);
void printSnapshot(Session& session, const ExportSnapshot& snapshot);

} // namespace stintbook
