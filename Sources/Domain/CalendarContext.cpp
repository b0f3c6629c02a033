#include "Domain/CalendarContext.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <absl/time/civil_time.h>
#include <fmt/format.h>

#include "Domain/SystemTimeZone.h"

namespace stintbook {

namespace {

constexpr CivilDate firstDate{1, 1, 1};
constexpr CivilDate lastDate{9999, 12, 31};

/// A little more than the years 1 to 9999, whatever the zone's offset.
constexpr double firstSecond = -62135683200;
constexpr double lastSecond = 253402387200;

/// The whole second that holds an instant. Offsets change at whole seconds only.
absl::Time secondOf(Instant at)
{
    const double second = std::isnan(at.secondsSinceEpoch) ? 0 : at.secondsSinceEpoch;
    return absl::FromUnixSeconds(
        static_cast<std::int64_t>(std::floor(std::clamp(second, firstSecond, lastSecond))));
}

Instant instantOf(absl::Time second)
{
    return {static_cast<double>(absl::ToUnixSeconds(second))};
}

CivilDate civilDate(absl::CivilSecond time)
{
    return {static_cast<int>(time.year()), time.month(), time.day()};
}

/// Names of the time zone database look like "America/Argentina/Buenos_Aires" or "Etc/GMT+5". The library
/// that reads them would also take paths and made-up fixed offsets.
bool looksLikeZoneName(std::string_view name)
{
    const auto isOrdinary = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_'
            || c == '+' || c == '-' || c == '/';
    };
    return !name.empty() && std::ranges::all_of(name, isOrdinary) && !name.starts_with('/')
        && !name.ends_with('/') && !name.contains("//");
}

/// What lies beside the zones in the database's folder, and the library's own spelling of UTC.
bool isNoZoneOfItsOwn(std::string_view name)
{
    return name.starts_with("posix/") || name.starts_with("right/") || name == "localtime"
        || name == "posixrules" || name == "UTC0";
}

std::optional<absl::TimeZone> loadZone(std::string_view name)
{
    absl::TimeZone zone;
    if (!looksLikeZoneName(name) || isNoZoneOfItsOwn(name) || !absl::LoadTimeZone(std::string(name), &zone))
        return std::nullopt;
    return zone;
}

/// The first instant at which a clock in the zone shows the time or, where it is skipped, a later one.
Instant firstShown(absl::CivilSecond time, absl::TimeZone zone)
{
    const auto found = zone.At(time);
    return instantOf(found.kind == absl::TimeZone::TimeInfo::SKIPPED ? found.trans : found.pre);
}

} // namespace

CalendarContext::CalendarContext(std::string identifier, absl::TimeZone zone)
    : m_identifier(std::move(identifier))
    , m_zone(zone)
{
}

std::optional<CalendarContext> CalendarContext::inZone(std::string_view timeZoneIdentifier)
{
    if (const auto zone = loadZone(timeZoneIdentifier))
        return CalendarContext(std::string(timeZoneIdentifier), *zone);
    return std::nullopt;
}

CalendarContext CalendarContext::system()
{
    const auto identifier = systemTimeZoneIdentifier(SystemTimeZoneSources::ofThisProcess());
    return {identifier, loadZone(identifier).value_or(absl::UTCTimeZone())};
}

bool CalendarContext::isKnownZone(std::string_view timeZoneIdentifier)
{
    return loadZone(timeZoneIdentifier).has_value();
}

Instant CalendarContext::startOf(CivilDate date) const
{
    if (date > lastDate)
        return {std::numeric_limits<double>::infinity()};
    return firstShown(absl::CivilSecond(date.year, date.month, date.day), m_zone);
}

Interval CalendarContext::boundsOfDayAt(Instant at) const
{
    if (m_lastBounds.contains(at))
        return m_lastBounds;

    const absl::Time second = secondOf(at);
    CivilDate date = std::clamp(civilDate(m_zone.At(second).cs), firstDate, lastDate);
    // Where the clock was set back over midnight it shows the former date, but the next day has begun.
    CivilDate next = date.plusDays(1);
    while (startOf(next) <= instantOf(second)) {
        date = next;
        next = date.plusDays(1);
    }
    m_lastDate = date;
    m_lastBounds = {startOf(date), startOf(next)};
    return m_lastBounds;
}

Instant CalendarContext::nextDayStart(Instant at) const
{
    return boundsOfDayAt(at).end;
}

LocalDay CalendarContext::dayOf(Instant at) const
{
    return {boundsOfDayAt(at).start, m_identifier};
}

CivilDate CalendarContext::dateOf(Instant at) const
{
    boundsOfDayAt(at);
    return m_lastDate;
}

Interval CalendarContext::boundsOf(const LocalDay& day) const
{
    if (day.timeZoneIdentifier != m_identifier) {
        if (const auto own = inZone(day.timeZoneIdentifier))
            return own->boundsOf(day);
    }
    return {day.start, nextDayStart(day.start)};
}

std::optional<LocalDay> CalendarContext::dayOn(CivilDate date) const
{
    if (date < firstDate || date > lastDate)
        return std::nullopt;
    const Instant start = startOf(date);
    if (civilDate(m_zone.At(secondOf(start)).cs) != date)
        return std::nullopt;
    return LocalDay{start, m_identifier};
}

int CalendarContext::secondsFromGMT(Instant at) const
{
    return m_zone.At(secondOf(at)).offset;
}

CivilTime CalendarContext::civilTime(Instant at) const
{
    const auto shown = m_zone.At(secondOf(at));
    return {civilDate(shown.cs), shown.cs.hour(), shown.cs.minute(), shown.cs.second(), shown.offset};
}

Instant CalendarContext::instantOn(CivilDate date, int hour, int minute, int second, Instant notBefore) const
{
    const absl::CivilSecond time(date.year, date.month, date.day, hour, minute, second);
    const auto first = firstShown(time, m_zone);
    const auto found = m_zone.At(time);
    const bool isShownAgain = found.kind == absl::TimeZone::TimeInfo::REPEATED;
    return isShownAgain && first < notBefore ? instantOf(found.post) : first;
}

std::string dayID(const LocalDay& day)
{
    const auto calendar = CalendarContext::inZone(day.timeZoneIdentifier);
    // A zone that this system does not know: its midnight lies within half a day of Greenwich's.
    const auto date = calendar
        ? calendar->dateOf(day.start)
        : civilDate(absl::ToCivilSecond(secondOf(day.start + Seconds{12.0 * 3600}), absl::UTCTimeZone()));
    return fmt::format("{}@{}", date.text(), day.timeZoneIdentifier);
}

std::optional<LocalDay> dayFromID(std::string_view dayID)
{
    const auto at = dayID.find('@');
    if (at == std::string_view::npos)
        return std::nullopt;
    const auto date = CivilDate::parse(dayID.substr(0, at));
    const auto calendar = CalendarContext::inZone(dayID.substr(at + 1));
    return date && calendar ? calendar->dayOn(*date) : std::nullopt;
}

} // namespace stintbook
