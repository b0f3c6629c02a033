#pragma once

#include <expected>
#include <filesystem>
#include <string>

#include "App/Ports/RunningInstance.h"
#include "Domain/CalendarContext.h"
#include "Store/ActivityDataDocument.h"

/// A copy of everything that the store holds, for the user's own keeping.
namespace stintbook {

/// Writes the document into a file that only its user may read: whole, or not at all. The request's own sink is
/// not used.
std::expected<void, ActivityDataExportProblem> exportActivityData(StoreDatabase& database,
                                                                  ActivityDataExportRequest request,
                                                                  const std::filesystem::path& file);

/// Hands the document to the request's sink when every read has succeeded.
std::expected<void, ActivityDataExportProblem> exportActivityData(StoreDatabase& database,
                                                                  ActivityDataExportRequest request);

/// Asks a running copy of this store to save what it holds, so that the document has it. The error, a sentence,
/// says why that did not happen; whether the export goes on is the caller's affair.
std::expected<void, std::string> saveWhatIsRecorded(RunningInstance& instance,
                                                    const std::filesystem::path& storeFile);

/// "Velloran data 2026-11-20.json", for the day of the instant.
std::string suggestedActivityDataFileName(Instant now, const CalendarContext& calendar);

} // namespace stintbook
