#pragma once

#include "Base/JsonValue.h"
#include "Domain/BrowserDomain.h"
#include "Domain/LocalDay.h"

/// Values that several records share, as JSON has them.
namespace stintbook {

JsonRead<BrowserDomain> jsonDomain(const JsonValue& value);
/// A zone that the system knows.
JsonRead<std::string> jsonTimeZone(const JsonValue& value);

/// Which members tell of a day.
struct DayKeys {
    std::string_view id;
    std::string_view start;
    std::string_view timeZone;
};
/// The day whose identifier is the one that its start and its zone give.
JsonRead<LocalDay> requiredDay(JsonObject& object, const DayKeys& keys);

} // namespace stintbook
