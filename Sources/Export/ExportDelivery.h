#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "Export/ExportFormat.h"
#include "Export/ExportSnapshot.h"

namespace stintbook {

/// What the document's own text or the pasteboard can refuse.
enum class ExportTextProblem { notEncodable, pasteboardRefused };
std::string message(ExportTextProblem problem);

/// Nothing was written and nothing recorded.
struct DeliveryNotProduced {
    /// What went wrong: a text problem's sentence, or the system's words.
    std::string reason;

    friend bool operator==(const DeliveryNotProduced&, const DeliveryNotProduced&) = default;
};

/// The file exists or the summary is on the pasteboard, but no snapshot tells of it.
struct DeliveredButNotRecorded {
    std::string reason;

    friend bool operator==(const DeliveredButNotRecorded&, const DeliveredButNotRecorded&) = default;
};

/// The user chose no file: back to the preview, and nothing is said.
struct ExportCancelled {
    friend bool operator==(const ExportCancelled&, const ExportCancelled&) = default;
};

using ExportFailure = std::variant<DeliveryNotProduced, DeliveredButNotRecorded, ExportCancelled>;

/// The heading of a failure; empty for a cancelled export.
std::string title(const ExportFailure& failure, ExportFormat format);
/// Its body, the reason first; empty for a cancelled export.
std::string message(const ExportFailure& failure);

struct ExportConfiguring { };
struct ExportPreviewing { };
/// Where an export stands: a failure leaves the request as it was.
using ExportStep = std::variant<ExportConfiguring, ExportPreviewing, ExportReceipt, ExportFailure>;

/// Instead of a delivery, when the days' revisions are no longer those of the document.
inline constexpr std::string_view previewRebuiltMessage =
    "The reviewed work changed while this preview was open. The preview has been rebuilt — check it and "
    "export "
    "again.";

} // namespace stintbook
