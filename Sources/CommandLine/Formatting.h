#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Base/Decimal.h"
#include "Base/Instant.h"
#include "Billing/BillingCurrency.h"
#include "CommandLine/Session.h"
#include "Domain/CalendarContext.h"

/// Values as people read them in tables.
namespace stintbook {

/// "7:05:12": hours, minutes, seconds, rounded to the second.
std::string shownDuration(Seconds length);
std::string shownDuration(const Decimal& seconds);

/// The time of day in the reader's locale, with seconds.
std::string shownTime(Instant at, const CalendarContext& calendar, std::string_view locale);
/// The day's date in the reader's locale.
std::string shownDate(const LocalDay& day, const CalendarContext& calendar, std::string_view locale);
/// Date and time in the reader's locale.
std::string shownDateTime(Instant at, const CalendarContext& calendar, std::string_view locale);

/// An amount in the reader's locale; why there is none, where it is missing.
std::string shownAmount(const Session& session, const std::optional<Decimal>& amount,
                        const std::optional<BillingCurrency>& currency);

} // namespace stintbook
