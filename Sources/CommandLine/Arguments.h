#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "App/ClientBook.h"
#include "Base/Instant.h"
#include "Domain/CalendarContext.h"
#include "Domain/LocalDay.h"

/// What the texts of the command line stand for. A text that does not parse is wrong usage; a name that
/// stands for nothing, or for two things, is refused.
namespace stintbook {

/// A day with the calendar that is in force for the command that names it.
struct DayArgument {
    LocalDay day;
    CalendarContext calendar;
};

/// "yyyy-MM-dd", "today", "yesterday" in the calendar's zone, or a whole dayID with a zone of its own.
DayArgument dayArgument(std::string_view text, const CalendarContext& calendar, Instant now);

/// "HH:mm" or "HH:mm:ss" on that day; "24:00" is its end.
Instant timeArgument(std::string_view text, const DayArgument& day);

/// The words that `yesOrNo` reads.
const std::vector<std::string>& yesAndNo();
bool yesOrNo(std::string_view text);

/// An identifier in either case; "no work/rule/… has that identifier" is for whoever looks it up.
UUID identifierArgument(std::string_view text);

/// "none" stands for nothing.
std::optional<std::string> unlessNone(std::string text);
/// The words that `roundingArgument` reads: the policies' stored texts, and "none".
std::vector<std::string> roundingChoices();
std::optional<RoundingPolicy> roundingArgument(std::string_view text);

/// A length of time in seconds, above zero.
Seconds secondsArgument(std::string_view text);

/// A whole number from 1.
int positionArgument(std::string_view text);

/// A number of days, from 1 to a year's.
int dayCountArgument(std::string_view text);

/// A UUID, or a name that is unambiguous. An unknown UUID passes: whoever uses it refuses it.
ClientID clientArgument(std::string_view text, const AssignmentDirectory& directory);
/// A UUID, a name, or "Client/Project". Of several with one name, the one of the client that is already named is
/// meant; a project of that name that another client has is left for the target check to refuse.
ProjectID projectArgument(std::string_view text, const AssignmentDirectory& directory,
                          std::optional<ClientID> client = std::nullopt);

} // namespace stintbook
