#pragma once

#include <sstream>
#include <string>

#include "Base/BuildInformation.h"
#include "Store/ActivityDataDocument.h"
#include "Store/ActivityDataImport.h"
#include "StoreSamples.h"

namespace stintbook {

/// The document, or why there is none.
inline std::string exported(StoreDatabase& database)
{
    std::string document;
    const auto written =
        writeActivityData(database,
                          {.exportedAt = {1795200000.5},
                           .sink = [&](std::string_view bytes) -> std::expected<void, std::string> {
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

/// Something of everything that a store keeps, as this version exports it.
inline std::string documentOfEverything()
{
    auto document =
        contentsOf(std::string(STINTBOOK_SOURCE_DIRECTORY) + "/Tests/Fixtures/ActivityData/everything.json");
    const std::string writtenBy = "0.1.0";
    return document.replace(document.find(writtenBy), writtenBy.size(), version());
}

} // namespace stintbook
