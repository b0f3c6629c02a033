// Whatever stands in a document: it is refused with a sentence and the store stays empty, or the store that it
// fills gives a document that fills another one alike.

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "Require.h"
#include "Store/ActivityDataDocument.h"
#include "Store/ActivityDataImport.h"

namespace {

using namespace stintbook;

std::string exported(StoreDatabase& database)
{
    std::string document;
    const ActivityDataExportRequest request{
        .exportedAt = {0}, .sink = [&](std::string_view bytes) -> std::expected<void, std::string> {
            document += bytes;
            return {};
        }};
    require(writeActivityData(database, request).has_value());
    return document;
}

bool isImported(StoreDatabase& database, const std::string& document)
{
    std::istringstream stream(document);
    const auto counts = importActivityData(database, stream);
    require(counts || !message(counts.error()).empty());
    return counts.has_value();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto store = StoreDatabase::inMemory();
    static const std::string nothing = exported(*store);
    const bool isTaken = isImported(*store, std::string(data, data + size));
    const auto document = exported(*store);
    if (!isTaken) {
        require(document == nothing);
        return 0;
    }
    const auto copy = StoreDatabase::inMemory();
    require(isImported(*copy, document));
    require(exported(*copy) == document);
    return 0;
}
