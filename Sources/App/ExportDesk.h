#pragma once

#include <expected>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "App/DayBook.h"
#include "App/OpenedStore.h"
#include "Export/ExportDelivery.h"
#include "Export/ExportDocumentModel.h"
#include "Export/ExportSnapshot.h"
#include "Export/Timesheet/ExportRegion.h"

namespace stintbook {

/// A document with what was recorded on its days since they were marked ready.
struct ExportPreview {
    ExportDocumentModel document;
    Seconds unreviewedDuration;
};

/// There is nothing to export; why not.
struct ExportBlocked {
    ExportBlock block;
    std::vector<ExportBlockedDay> days;
};

/// The reviewed work changed while the preview was open.
struct PreviewOutdated { };

/// No snapshot has that identifier.
struct UnknownSnapshot {
    ExportSnapshotID id;
};

/// Why a day is left out, which is told in any case.
std::string blockedReason(const ExportBlockedDay& day);
/// "2 h of work was recorded after its day was marked ready and is not included."
std::string unreviewedNote(std::string_view duration);

using ExportDeskProblem =
    std::variant<PersistenceError, ExportBlocked, PreviewOutdated, ExportFailure, UnknownSnapshot>;
std::string message(const ExportDeskProblem& problem);

/// Builds documents from ready days, delivers them and records what was delivered.
class ExportDesk {
public:
    ExportDesk(OpenedStore& store, CalendarContext calendar);

    /// Also of a range that has nothing to export: the document tells why.
    std::expected<ExportPreview, ExportDeskProblem> preview(const ExportRequest& request) const;

    /// Brings the rendered bytes to where they are wanted; the error is the system's own words.
    using Delivery = std::function<std::expected<void, std::string>(const std::string& bytes)>;
    /// Reads the days' revisions again, renders, delivers, then records. Nothing is delivered when the
    /// document is out of date or empty. `now` is the instant of the record, with which `render` gives the
    /// same bytes again.
    std::expected<ExportReceipt, ExportDeskProblem> deliver(const ExportDocumentModel& document,
                                                            const ExportRegion& region, Instant now,
                                                            const Delivery& delivery);

    /// Renders what was delivered once more, and delivers that; records nothing. Its lines, amounts and instant
    /// are the recorded ones. Paper and locale are those of the region, of which no record is kept.
    std::expected<void, ExportDeskProblem> deliverAgain(const ExportSnapshot& snapshot,
                                                        const ExportRegion& region,
                                                        const Delivery& delivery) const;

    Stored<std::vector<ExportSnapshot>> history() const;
    std::expected<ExportSnapshot, ExportDeskProblem> snapshot(ExportSnapshotID id) const;
    /// The days of an export whose reviewed work is not what it was then, in its order.
    Stored<std::vector<LocalDay>> changedSince(const ExportSnapshot& snapshot) const;

private:
    OpenedStore& m_store;
    CalendarContext m_calendar;
};

/// The document in its format. What was delivered comes again of its snapshot: documentOf(snapshot), generated
/// at the snapshot's `createdAt`, for the same region.
std::expected<std::string, ExportFailure> render(const ExportDocumentModel& document,
                                                 const ExportRegion& region, Instant generatedAt);

/// Writes a file in one step: whole, or not at all.
ExportDesk::Delivery fileDelivery(std::filesystem::path file);

} // namespace stintbook
