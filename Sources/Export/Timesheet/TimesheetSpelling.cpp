#include "Export/Timesheet/TimesheetSpelling.h"

#include <algorithm>
#include <chrono>

#include <unicode/datefmt.h>
#include <unicode/numberformatter.h>
#include <unicode/timezone.h>

#include "Billing/AmountFormat.h"

namespace stintbook {

namespace {

using icu::number::LocalizedNumberFormatter;

constexpr int hundredths = 2;
constexpr int tenThousandths = 4;

icu::Locale icuLocale(std::string_view locale)
{
    // Where no locale is set, days stand before months, and months are named in English.
    if (locale == "C" || locale == "POSIX")
        return {"en", "GB"};
    return icu::Locale(std::string(locale).c_str());
}

/// Behind the point of an hour.
int places(const ExportDocumentModel& document)
{
    const auto isEven = [](const ExportLine& line) {
        const auto hours = hoursOf(line.billedSeconds);
        return hours == hours.rounded(hundredths);
    };
    return std::ranges::all_of(document.lines, isEven) ? hundredths : tenThousandths;
}

icu::UnicodeString written(CivilDate date, const icu::DateFormat& format)
{
    constexpr double millisecondsOfADay = 86'400'000;
    const auto days = std::chrono::sys_days(std::chrono::year(date.year) / date.month / date.day);
    icu::UnicodeString text;
    return format.format(days.time_since_epoch().count() * millisecondsOfADay, text);
}

/// With the month's name where that is the locale's way and leaves the date short enough for its column, and
/// in numbers else.
std::unique_ptr<icu::DateFormat> dateFormat(const icu::Locale& locale)
{
    constexpr int longestDate = 13;
    constexpr CivilDate dateOfALongMonth{2026, 9, 28};
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::DateFormat> format(
        icu::DateFormat::createDateInstance(icu::DateFormat::kMedium, locale));
    if (format && written(dateOfALongMonth, *format).countChar32() > longestDate)
        format.reset(icu::DateFormat::createInstanceForSkeleton("yMMdd", locale, status));
    if (format)
        format->setTimeZone(*icu::TimeZone::getGMT());
    return format;
}

std::string written(const Decimal& number, const LocalizedNumberFormatter& format)
{
    UErrorCode status = U_ZERO_ERROR;
    const auto plain = number.text();
    std::string text;
    format.formatDecimal({plain.data(), static_cast<int32_t>(plain.size())}, status)
        .toString(status)
        .toUTF8String(text);
    return U_SUCCESS(status) ? text : plain;
}

} // namespace

struct TimesheetSpelling::Formats {
    std::unique_ptr<icu::DateFormat> dates;
    LocalizedNumberFormatter hours;
    LocalizedNumberFormatter rates;
    std::optional<AmountFormat> money;
};

TimesheetSpelling::TimesheetSpelling(const ExportDocumentModel& document, const ExportRegion& region)
{
    const auto numbers = icu::number::NumberFormatter::withLocale(icuLocale(region.moneyLocale))
                             .roundingMode(UNUM_ROUND_HALFUP);
    auto formats = std::make_unique<Formats>();
    formats->dates = dateFormat(icuLocale(region.dateLocale));
    formats->hours = numbers.precision(icu::number::Precision::fixedFraction(places(document)));
    formats->rates =
        numbers.precision(icu::number::Precision::minMaxFraction(hundredths, Decimal::significantDigits));
    if (document.currency)
        formats->money.emplace(*document.currency, region.moneyLocale);
    m_formats = std::move(formats);
}

TimesheetSpelling::~TimesheetSpelling() = default;

std::string TimesheetSpelling::date(CivilDate date) const
{
    if (!m_formats->dates)
        return date.text();
    std::string utf8;
    return written(date, *m_formats->dates).toUTF8String(utf8);
}

std::string TimesheetSpelling::hours(const Decimal& hours) const
{
    return written(hours, m_formats->hours) + "\u00a0h";
}

std::string TimesheetSpelling::rate(const Decimal& rate) const
{
    return m_formats->money ? m_formats->money->rateText(rate) : written(rate, m_formats->rates);
}

std::string TimesheetSpelling::amount(const Decimal& amount) const
{
    return m_formats->money ? m_formats->money->text(amount) : unavailable;
}

Decimal hoursOf(const Decimal& seconds)
{
    return seconds / 3600;
}

} // namespace stintbook
