#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <stop_token>
#include <string>
#include <string_view>
#include <variant>

#include "Base/Instant.h"
#include "Store/StoreDatabase.h"

/// Everything that the store holds as one JSON document: indented, the keys of every object in code-point order,
/// slashes not escaped. It says itself what it is, and a store that was filled from it gives the same document.
namespace stintbook {

/// Changes with the layout of the document.
inline constexpr int activityDataFormatVersion = 1;

/// Which part of the store.
enum class ActivityDataGroup { recordedActivity, review, billing };

/// A part of the store could not be read.
struct ActivityDataUnavailable {
    ActivityDataGroup group;
};

/// What the document was passed to did not take it, in the system's own words.
struct ActivityDataNotWritten {
    std::string reason;
};

struct ActivityDataCancelled { };

using ActivityDataExportProblem =
    std::variant<ActivityDataUnavailable, ActivityDataNotWritten, ActivityDataCancelled>;
std::string message(const ActivityDataExportProblem& problem);

struct ActivityDataExportRequest {
    Instant exportedAt;
    /// Takes the next bytes of the document; the error is the system's own words.
    std::function<std::expected<void, std::string>(std::string_view bytes)> sink;
    std::stop_token cancellation{};
    /// Told now and then how many recorded segments are written.
    std::function<void(std::int64_t segmentCount)> progress = [](std::int64_t) { };
};

/// Passes the document on piece by piece, out of one unchanging state of the store; memory holds a piece. It
/// occupies its database for as long as it takes, so that beside a recorder it needs one of its own, a guest.
std::expected<void, ActivityDataExportProblem> writeActivityData(StoreDatabase& database,
                                                                 const ActivityDataExportRequest& request);

} // namespace stintbook
