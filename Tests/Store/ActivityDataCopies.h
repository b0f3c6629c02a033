#pragma once

#include <sstream>
#include <string>

#include "Store/ActivityDataDocument.h"
#include "Store/ActivityDataImport.h"
#include "StoreSamples.h"

namespace stintbook {

inline constexpr Instant sampleExport{1795200000.5};

/// The document, or why there is none.
inline std::string exported(StoreDatabase& database)
{
    std::string document;
    const auto written = writeActivityData(
        database,
        {.exportedAt = sampleExport, .sink = [&](std::string_view bytes) -> std::expected<void, std::string> {
             document += bytes;
             return {};
         }});
    return written ? document : message(written.error());
}

/// Empty, or why it was not imported.
inline std::string imported(StoreDatabase& database, const std::string& document)
{
    std::istringstream stream(document);
    const auto counts = importActivityData(database, stream);
    return counts ? "" : message(counts.error());
}

} // namespace stintbook
