#include "CommandLine/Formatting.h"

#include <cmath>
#include <map>
#include <memory>
#include <utility>

#include <fmt/format.h>
#include <unicode/datefmt.h>
#include <unicode/timezone.h>

#include "Base/ReadersLocale.h"
#include "Billing/AmountFormat.h"

namespace stintbook {

namespace {

enum class Spelling { time, date, dateAndTime };

icu::DateFormat* made(Spelling spelling, const icu::Locale& locale)
{
    switch (spelling) {
    case Spelling::time:
        return icu::DateFormat::createTimeInstance(icu::DateFormat::kMedium, locale);
    case Spelling::date:
        return icu::DateFormat::createDateInstance(icu::DateFormat::kMedium, locale);
    case Spelling::dateAndTime:
        break;
    }
    return icu::DateFormat::createDateTimeInstance(icu::DateFormat::kMedium, icu::DateFormat::kShort, locale);
}

/// Making a format takes a hundred times as long as using it, and a table asks for the same one in every row.
icu::DateFormat* format(Spelling spelling, std::string_view locale)
{
    static std::map<std::pair<Spelling, std::string>, std::unique_ptr<icu::DateFormat>> formats;
    auto [place, isNew] = formats.try_emplace({spelling, std::string(locale)});
    if (isNew) {
        place->second.reset(made(spelling, icu::Locale(readersLocale(locale).c_str())));
        // The calendar knows the zone's rules; the format only spells the civil time.
        if (place->second)
            place->second->setTimeZone(*icu::TimeZone::getGMT());
    }
    return place->second.get();
}

std::string shown(Instant at, const CalendarContext& calendar, icu::DateFormat* format)
{
    if (format == nullptr)
        return fmt::format("{}", at.secondsSinceEpoch);
    icu::UnicodeString text;
    format->format(std::floor(at.secondsSinceEpoch + calendar.secondsFromGMT(at)) * 1000.0, text);
    std::string utf8;
    return text.toUTF8String(utf8);
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
    return shown(at, calendar, format(Spelling::time, locale));
}

std::string shownDate(const LocalDay& day, const CalendarContext& calendar, std::string_view locale)
{
    return shown(day.start, calendar, format(Spelling::date, locale));
}

std::string shownDateTime(Instant at, const CalendarContext& calendar, std::string_view locale)
{
    return shown(at, calendar, format(Spelling::dateAndTime, locale));
}

std::string shownAmount(const Session& session, const std::optional<Decimal>& amount,
                        const std::optional<BillingCurrency>& currency)
{
    if (!currency)
        return "— (currency not set)";
    return amount ? formattedAmount(*amount, *currency, session.locale("LC_MONETARY")) : "—";
}

} // namespace stintbook
