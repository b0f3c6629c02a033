#include <fmt/format.h>

#include "App/DayBook.h"
#include "CommandLine/Arguments.h"
#include "CommandLine/CommandTree.h"
#include "CommandLine/WorkJSON.h"
#include "CommandLine/WorkTables.h"
#include "Store/ActivityDataRecords.h"
#include "Store/PersistentActivitySegmentRepository.h"
#include "Store/RecordWriting.h"

namespace stintbook {

namespace {

void addSegments(CommandTree& tree)
{
    auto verb = tree.verb("segments", "What was recorded on a day");
    const auto& from = verb.argument("DAY", "The day");
    const auto& to = verb.option("--to", "DAY", "The last day of a range");
    verb.runs([&](Session& session) {
        const auto first = dayArgument(from, session.calendar(), session.now());
        const auto last = to ? dayArgument(*to, first.calendar, session.now()) : first;
        const Interval range{first.calendar.boundsOf(first.day).start, last.calendar.boundsOf(last.day).end};
        const auto segments = orRefuse(session.store().segments().segments(range));
        if (!session.isJSON()) {
            printSegments(session, first.calendar, segments);
            return;
        }
        session.printJSON([&](JsonWriter& json) { recordArray(json, "segments", segments); });
    });
}

void addList(Noun& noun)
{
    auto verb = noun.verb("list", "Days with recorded or reviewed work");
    const auto& from = verb.option("--from", "DAY", "The first day");
    const auto& to = verb.option("--to", "DAY", "The last day");
    verb.runs([&](Session& session) {
        const auto bound = [&](const std::optional<std::string>& text) -> std::optional<LocalDay> {
            if (!text)
                return std::nullopt;
            return dayArgument(*text, session.calendar(), session.now()).day;
        };
        const auto days = orRefuse(DayBook(session.store(), session.calendar()).list(bound(from), bound(to)));
        if (!session.isJSON()) {
            printDays(session, days);
            return;
        }
        session.printJSON([&](JsonWriter& json) { recordArray(json, "days", days); });
    });
}

void addShow(Noun& noun)
{
    auto verb = noun.verb("show", "A day's blocks, items and totals");
    const auto& text = verb.argument("DAY", "The day");
    verb.runs([&](Session& session) {
        const auto when = dayArgument(text, session.calendar(), session.now());
        const auto day = orRefuse(DayBook(session.store(), when.calendar).open(when.day));
        if (session.isJSON())
            session.printJSON([&](JsonWriter& json) { writeMembers(json, day); });
        else
            printDay(session, when.calendar, day);
    });
}

void addReady(Noun& noun)
{
    auto verb = noun.verb("ready", "Freeze a day's work and mark it ready to bill");
    const auto& text = verb.argument("DAY", "The day");
    verb.runs([&](Session& session) {
        const auto when = dayArgument(text, session.calendar(), session.now());
        const auto approval =
            orRefuse(DayBook(session.store(), when.calendar).markReady(when.day, session.now()));
        if (!session.isJSON()) {
            session.output() << "This day is ready to bill.\n";
            return;
        }
        session.printJSON([&](JsonWriter& json) {
            json.member("approvedAt", approval.approvedAt);
            json.member("revision", approval.revision.value);
        });
    });
}

} // namespace

void addDayCommands(CommandTree& tree)
{
    addSegments(tree);
    auto noun = tree.noun("day", "Days under review");
    addList(noun);
    addShow(noun);
    addReady(noun);
}

} // namespace stintbook
