#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <istream>
#include <map>
#include <stop_token>
#include <string>
#include <variant>

#include "Base/JsonReader.h"
#include "Domain/PersistenceError.h"
#include "Store/StoreDatabase.h"

/// A store that is filled from a document of `ActivityDataDocument.h`.
namespace stintbook {

/// The store holds something already.
struct StoreNotEmpty { };

/// The document has a layout of another version.
struct UnknownFormatVersion {
    std::string version;
};

struct ActivityDataImportCancelled { };

/// What keeps a document out. The store is as it was.
using ActivityDataImportProblem = std::variant<JsonProblem, UnknownFormatVersion, StoreNotEmpty,
                                               ActivityDataImportCancelled, UnreadableRecord, StoreFailure>;
std::string message(const ActivityDataImportProblem& problem);

/// How many records each list of the document held, by its key.
using ActivityDataCounts = std::map<std::string, std::int64_t, std::less<>>;

struct ActivityDataImportRequest {
    std::stop_token cancellation{};
    /// Told now and then how many bytes are read.
    std::function<void(std::uint64_t byteCount)> progress = [](std::uint64_t) { };
};

/// Everything that the document holds, in one transaction: all of it or nothing. The document is strictly what
/// an export writes, with keys in any order: what it does not know, what is missing, and what would not be read
/// back from the store is refused, and so is a second record of one identifier and a client or project that
/// nobody defines. Segments that are named but not there are none of that: activity is kept for a shorter time
/// than what was made of it.
///
/// Memory holds one record, and the identifiers of clients, projects, rules and days.
std::expected<ActivityDataCounts, ActivityDataImportProblem> importActivityData(
    StoreDatabase& database, std::istream& document, const ActivityDataImportRequest& request = {});

} // namespace stintbook
