#include "Store/StoreInformation.h"

#include <system_error>

#include <fmt/format.h>

#include "Store/SegmentRecords.h"
#include "Store/StoreFileInspection.h"
#include "Store/StoreSchema.h"

namespace stintbook {

namespace {

std::uintmax_t sizeOf(const std::filesystem::path& file)
{
    std::error_code missing;
    const auto size = std::filesystem::file_size(file, missing);
    return missing ? 0 : size;
}

std::vector<StoreInformation::Table> tables(StoreConnection& connection)
{
    std::vector<StoreInformation::Table> tables;
    for (auto& name : tableNames(connection)) {
        const auto count = connection.number(fmt::format("SELECT count(*) FROM \"{}\"", name));
        tables.push_back({std::move(name), count});
    }
    return tables;
}

} // namespace

Stored<StoreInformation> storeInformation(StoreDatabase& database)
{
    return database.read([&](StoreConnection& connection) -> Stored<StoreInformation> {
        return StoreInformation{
            .file = database.file(),
            .schemaVersion = static_cast<int>(connection.number("PRAGMA user_version")),
            .tables = tables(connection),
            .fileSize = sizeOf(database.file()),
            .logSize = sizeOf(besideStore(database.file(), "-wal")),
            .recorded = readRecordedTime(connection),
        };
    });
}

} // namespace stintbook
