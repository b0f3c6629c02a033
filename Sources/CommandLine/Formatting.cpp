#include "CommandLine/Formatting.h"

#include <cmath>
#include <memory>

#include <fmt/format.h>
#include <unicode/datefmt.h>
#include <unicode/timezone.h>

namespace stintbook {

namespace {

std::string shown(Instant at, const CalendarContext& calendar, std::unique_ptr<icu::DateFormat> format)
{
    if (!format)
        return fmt::format("{}", at.secondsSinceEpoch);
    // The calendar knows the zone's rules; the format only spells the civil time.
    format->setTimeZone(*icu::TimeZone::getGMT());
    icu::UnicodeString text;
    format->format(std::floor(at.secondsSinceEpoch + calendar.secondsFromGMT(at)) * 1000.0, text);
    std::string utf8;
    return text.toUTF8String(utf8);
}

icu::Locale icuLocale(std::string_view locale)
{
    if (locale == "C" || locale == "POSIX")
        return icu::Locale("en", "GB");
    return icu::Locale(std::string(locale).c_str());
}

} // namespace

std::string shownDuration(Seconds length)
{
    const auto seconds = std::llround(std::abs(length.value));
    return fmt::format("{}{}:{:02}:{:02}", length.value < 0 && seconds > 0 ? "-" : "", seconds / 3600,
                       seconds / 60 % 60, seconds % 60);
}

std::string shownDuration(const Decimal& seconds)
{
    return shownDuration(Seconds{seconds.approximate()});
}

std::string shownTime(Instant at, const CalendarContext& calendar, std::string_view locale)
{
    return shown(at, calendar,
                 std::unique_ptr<icu::DateFormat>(
                     icu::DateFormat::createTimeInstance(icu::DateFormat::kMedium, icuLocale(locale))));
}

std::string shownDateTime(Instant at, const CalendarContext& calendar, std::string_view locale)
{
    return shown(at, calendar,
                 std::unique_ptr<icu::DateFormat>(icu::DateFormat::createDateTimeInstance(
                     icu::DateFormat::kMedium, icu::DateFormat::kShort, icuLocale(locale))));
}

std::string shownAmount(const Session& session, const std::optional<Decimal>& amount,
                        const std::optional<BillingCurrency>& currency)
{
    if (!currency)
        return "— (currency not set)";
    return amount ? formattedAmount(*amount, *currency, session.locale("LC_MONETARY")) : "—";
}

} // namespace stintbook
