#include "CommandLine/Arguments.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <vector>

#include <fmt/format.h>

#include "CommandLine/Session.h"

namespace stintbook {

namespace {

std::optional<int> wholeNumber(std::string_view text)
{
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

std::optional<int> twoDigits(std::string_view text)
{
    const auto number = wholeNumber(text);
    return text.size() == 2 && number >= 0 ? number : std::nullopt;
}

/// The entries that `matches`.
template <typename Entry, typename Matches>
std::vector<Entry> those(const std::vector<Entry>& entries, Matches matches)
{
    std::vector<Entry> found;
    std::ranges::copy_if(entries, std::back_inserter(found), matches);
    return found;
}

/// The one entry that was found under a name, or a refusal.
template <typename Entry>
auto theOne(const std::vector<Entry>& found, std::string_view what, std::string_view text)
{
    if (found.size() > 1)
        throw Refusal{
            fmt::format("More than one {} is called “{}”; give its identifier instead.", what, text)};
    if (found.empty())
        throw Refusal{fmt::format("No {} is called “{}”.", what, text)};
    return found.front().id;
}

} // namespace

DayArgument dayArgument(std::string_view text, const CalendarContext& calendar, Instant now)
{
    if (text.contains('@')) {
        const auto day = dayFromID(text);
        if (!day)
            throw WrongUsage{fmt::format("'{}' is no day.", text)};
        return {*day, *CalendarContext::inZone(day->timeZoneIdentifier)};
    }
    auto date = CivilDate::parse(text);
    if (text == "today")
        date = calendar.dateOf(now);
    if (text == "yesterday")
        date = calendar.dateOf(calendar.dayOf(now).start - Seconds{1});
    const auto day = date ? calendar.dayOn(*date) : std::nullopt;
    if (!day)
        throw WrongUsage{fmt::format("'{}' is no day; write yyyy-MM-dd, today or yesterday.", text)};
    return {*day, calendar};
}

Instant timeArgument(std::string_view text, const DayArgument& day)
{
    const bool hasSeconds = text.size() == 8;
    const bool isShaped =
        (text.size() == 5 || hasSeconds) && text[2] == ':' && (!hasSeconds || text[5] == ':');
    const auto hour = isShaped ? twoDigits(text.substr(0, 2)) : std::nullopt;
    const auto minute = isShaped ? twoDigits(text.substr(3, 2)) : std::nullopt;
    const auto second = hasSeconds ? twoDigits(isShaped ? text.substr(6, 2) : "") : std::optional(0);
    const bool isDayEnd = hour == 24 && minute == 0 && second == 0;
    if (!hour || !minute || !second || *minute > 59 || *second > 59 || (*hour > 23 && !isDayEnd))
        throw WrongUsage{fmt::format("'{}' is no time; write HH:mm or HH:mm:ss.", text)};
    return day.calendar.instantOn(day.calendar.dateOf(day.day.start), *hour, *minute, *second);
}

const std::vector<std::string>& yesAndNo()
{
    static const std::vector<std::string> words{"yes", "no"};
    return words;
}

bool yesOrNo(std::string_view text)
{
    return text == "yes";
}

UUID identifierArgument(std::string_view text)
{
    const auto id = UUID::parse(text);
    if (!id)
        throw Refusal{fmt::format("“{}” is no identifier.", text)};
    return *id;
}

std::optional<std::string> unlessNone(std::string text)
{
    if (text == "none")
        return std::nullopt;
    return text;
}

std::vector<std::string> roundingChoices()
{
    std::vector<std::string> words;
    for (const auto& [policy, text] : RawValues<RoundingPolicy>::table)
        words.emplace_back(text);
    words.emplace_back("none");
    return words;
}

std::optional<RoundingPolicy> roundingArgument(std::string_view text)
{
    return fromRawValue<RoundingPolicy>(text);
}

Seconds secondsArgument(std::string_view text)
{
    double seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (error != std::errc{} || end != text.data() + text.size() || !(seconds > 0) || !std::isfinite(seconds))
        throw WrongUsage{fmt::format("'{}' is no number of seconds.", text)};
    return {seconds};
}

int positionArgument(std::string_view text)
{
    const auto position = wholeNumber(text);
    if (!position || *position < 1)
        throw WrongUsage{fmt::format("'{}' is no position; write a whole number from 1.", text)};
    return *position;
}

int dayCountArgument(std::string_view text)
{
    constexpr int most = 366;
    const auto days = wholeNumber(text);
    if (!days || *days < 1 || *days > most)
        throw WrongUsage{
            fmt::format("'{}' is no number of days; write a whole number from 1 to {}.", text, most)};
    return *days;
}

ClientID clientArgument(std::string_view text, const AssignmentDirectory& directory)
{
    if (const auto id = ClientID::parse(text))
        return *id;
    const auto isCalled = [&](const Client& client) { return client.name == text; };
    return theOne(those(directory.clients(), isCalled), "client", text);
}

ProjectID projectArgument(std::string_view text, const AssignmentDirectory& directory,
                          std::optional<ClientID> client)
{
    if (const auto id = ProjectID::parse(text))
        return *id;
    const auto named = those(directory.projects(), [&](const Project& project) {
        const auto* owner = directory.client(project.clientID);
        return project.name == text
            || (owner != nullptr && fmt::format("{}/{}", owner->name, project.name) == text);
    });
    const auto atClient = those(named, [&](const Project& project) { return project.clientID == client; });
    return theOne(atClient.empty() ? named : atClient, "project", text);
}

} // namespace stintbook
