#pragma once

#include <filesystem>
#include <string>

#include "Store/StoreFailures.h"

namespace stintbook {

/// Why a store was not opened. Not a byte of its file was changed.
struct StoreOpenProblem {
    enum class Kind {
        writtenByNewerVersion,
        notAStore,
        emptyFile,
        cutShort,
        damaged,
        /// The tables are not those of its version.
        unexpectedLayout,
        unreadable,
        readOnly,
        diskFull,
        /// Another program kept it locked for longer than one waits.
        busy,
        /// It must be migrated, which only the process that holds the instance lock may do.
        earlierVersionInUse,
        /// It is not there, or must be migrated, and was only to be read.
        missing,
        earlierVersion,
        other,
    };

    Kind kind;
    std::filesystem::path file;
    /// The system's own words, for `unreadable`, `readOnly` and `other`.
    std::string detail;
};

std::string message(const StoreOpenProblem& problem);

StoreOpenProblem storeOpenProblem(const std::filesystem::path& file, const SQLite::Exception& exception,
                                  sqlite3* connection);

} // namespace stintbook
