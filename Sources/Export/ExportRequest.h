#pragma once

#include <optional>

#include "Base/Instant.h"
#include "Domain/Client.h"
#include "Domain/LocalDay.h"
#include "Export/ExportFieldSet.h"
#include "Export/ExportFormat.h"

namespace stintbook {

struct ExportRequest {
    /// Both inclusive.
    LocalDay rangeStart;
    LocalDay rangeEnd;
    std::optional<ClientID> clientFilterID;
    std::optional<ProjectID> projectFilterID;
    ExportMode mode = ExportMode::summarized;
    ExportFormat format = ExportFormat::summarizedCSV;
    ExportFieldSet fields;

    /// A range given the wrong way round turned, and the fields as the mode sets them.
    ExportRequest normalised() const;
    /// From the first instant of the first day to the last day's end, for a range the right way round. A
    /// day belongs to the export when it starts in here: so each day, in whatever zone it was cut, falls
    /// into exactly one of several ranges that follow each other.
    Interval interval() const;

    friend bool operator==(const ExportRequest&, const ExportRequest&) = default;
};

} // namespace stintbook
