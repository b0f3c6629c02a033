#pragma once

#include <optional>
#include <string_view>

#include "Base/Json.h"
#include "Base/RawValue.h"

/// Members of a JSON object that are records themselves, written by the `write` of their type.
namespace stintbook {

template <typename Record> void recordMember(JsonWriter& json, std::string_view key, const Record& record)
{
    json.key(key);
    write(json, record);
}

/// Left out when absent.
template <typename Record>
void recordMember(JsonWriter& json, std::string_view key, const std::optional<Record>& record)
{
    if (record)
        recordMember(json, key, *record);
}

template <typename Records> void recordArray(JsonWriter& json, std::string_view key, const Records& records)
{
    json.key(key);
    json.array(records, [&](const auto& record) { write(json, record); });
}

template <typename E> std::optional<std::string_view> rawText(std::optional<E> value)
{
    return value ? std::optional(rawValue(*value)) : std::nullopt;
}

} // namespace stintbook
