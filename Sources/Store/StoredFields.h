#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Base/Decimal.h"
#include "Base/Identifier.h"
#include "Base/RawValue.h"
#include "Domain/BrowserDomain.h"
#include "Domain/PersistenceError.h"

/// The checks that every stored record passes on its way back into the domain's types.
namespace stintbook {

inline std::unexpected<PersistenceError> unreadable(const UUID& id, std::string_view field)
{
    return std::unexpected<PersistenceError>(UnreadableRecord{id, std::string(field)});
}

template <typename Kind>
std::unexpected<PersistenceError> unreadable(const Identifier<Kind>& id, std::string_view field)
{
    return unreadable(id.uuid, field);
}

template <typename E> Stored<E> storedCase(const UUID& id, std::string_view field, std::string_view raw)
{
    if (const auto value = fromRawValue<E>(raw))
        return *value;
    return unreadable(id, field);
}

template <typename E>
Stored<std::optional<E>> storedCase(const UUID& id, std::string_view field,
                                    std::optional<std::string_view> raw)
{
    if (!raw)
        return std::nullopt;
    if (const auto value = fromRawValue<E>(*raw))
        return value;
    return unreadable(id, field);
}

/// A decimal that is not negative.
Stored<Decimal> storedDecimal(const UUID& id, std::string_view field, const std::string& text);
Stored<std::optional<Decimal>> storedDecimal(const UUID& id, std::string_view field,
                                             const std::optional<std::string>& text);

/// A host in normal form.
Stored<std::optional<BrowserDomain>> storedDomain(const UUID& id, std::string_view field,
                                                  std::optional<std::string_view> host);

/// The zone's identifier, when the system knows such a zone.
Stored<std::string> storedTimeZone(const UUID& id, std::string_view field, std::string identifier);

} // namespace stintbook
