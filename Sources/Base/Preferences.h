#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "Base/Instant.h"

namespace stintbook {

/// A value under a preference key. `Instant` is a date.
using PreferenceValue = std::variant<bool, std::int64_t, double, std::string, Instant>;

/// A small key-value store for the user's choices.
class PreferenceStoring {
public:
    virtual ~PreferenceStoring() = default;
    /// None when nothing is stored under the key.
    virtual std::optional<PreferenceValue> value(std::string_view key) const = 0;
    /// Storing none removes the key. False when the value could not be kept.
    virtual bool store(std::string_view key, std::optional<PreferenceValue> value) = 0;
    /// Takes over what other processes stored meanwhile, where they can.
    virtual void refresh() { }
};

class InMemoryPreferences final : public PreferenceStoring {
public:
    std::optional<PreferenceValue> value(std::string_view key) const override;
    bool store(std::string_view key, std::optional<PreferenceValue> value) override;

private:
    std::map<std::string, PreferenceValue, std::less<>> m_values;
};

} // namespace stintbook
