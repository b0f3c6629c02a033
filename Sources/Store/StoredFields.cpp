#include "Store/StoredFields.h"

#include "Base/Try.h"
#include "Domain/CalendarContext.h"

namespace stintbook {

Stored<Decimal> storedDecimal(const UUID& id, std::string_view field, const std::string& text)
{
    const auto number = Decimal::parse(text);
    if (!number || number->isNegative())
        return unreadable(id, field);
    return *number;
}

Stored<std::optional<Decimal>> storedDecimal(const UUID& id, std::string_view field,
                                             const std::optional<std::string>& text)
{
    if (!text)
        return std::nullopt;
    return TRY(storedDecimal(id, field, *text));
}

Stored<std::optional<BrowserDomain>> storedDomain(const UUID& id, std::string_view field,
                                                  std::optional<std::string_view> host)
{
    if (!host)
        return std::nullopt;
    auto domain = BrowserDomain::fromText(*host);
    if (!domain)
        return unreadable(id, field);
    return domain;
}

Stored<std::string> storedTimeZone(const UUID& id, std::string_view field, std::string identifier)
{
    if (!CalendarContext::isKnownZone(identifier))
        return unreadable(id, field);
    return identifier;
}

} // namespace stintbook
