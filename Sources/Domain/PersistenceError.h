#pragma once

#include <expected>
#include <string>
#include <variant>

#include "Base/Identifier.h"

namespace stintbook {

/// A stored record failed its read check. The whole read fails; no partial list is returned.
struct UnreadableRecord {
    /// The record's identifier; a fresh one for records that have none.
    UUID id;
    /// Which field, as "clientBilling.rounding".
    std::string field;

    friend bool operator==(const UnreadableRecord&, const UnreadableRecord&) = default;
};

/// The store could not do what was asked; nothing was changed.
struct StoreFailure {
    /// The database's or the system's own words.
    std::string reason;

    friend bool operator==(const StoreFailure&, const StoreFailure&) = default;
};

using PersistenceError = std::variant<UnreadableRecord, StoreFailure>;

std::string message(const UnreadableRecord& record);
std::string message(const StoreFailure& failure);
std::string message(const PersistenceError& error);

template <typename T> using Stored = std::expected<T, PersistenceError>;

} // namespace stintbook
