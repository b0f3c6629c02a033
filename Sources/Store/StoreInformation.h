#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Store/StoreDatabase.h"

namespace stintbook {

/// What a store holds, in figures.
struct StoreInformation {
    std::filesystem::path file;
    int schemaVersion = 0;
    struct Table {
        std::string name;
        std::int64_t recordCount = 0;
    };
    /// By name.
    std::vector<Table> tables;
    /// Of the database's file and of the log beside it, in bytes; none in memory.
    std::uintmax_t fileSize = 0;
    std::uintmax_t logSize = 0;
    /// From the first recorded instant to the last one.
    std::optional<Interval> recorded;
};

Stored<StoreInformation> storeInformation(StoreDatabase& database);

} // namespace stintbook
