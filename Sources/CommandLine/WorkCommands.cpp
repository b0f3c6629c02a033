#include <fmt/format.h>

#include "App/ClientBook.h"
#include "App/DayBook.h"
#include "CommandLine/Arguments.h"
#include "CommandLine/CommandTree.h"
#include "CommandLine/WorkJSON.h"
#include "CommandLine/WorkTables.h"
#include "Store/ActivityDataRecords.h"
#include "Store/RecordWriting.h"

namespace stintbook {

namespace {

/// The arguments that name work: a day and subjects of it.
struct SelectionArguments {
    const std::string& day;
    const std::vector<std::string>& ids;
};

SelectionArguments selection(Verb& verb)
{
    return {verb.argument("DAY", "The day"), verb.arguments("ID", "Blocks and items of that day")};
}

std::vector<UUID> identifiers(const std::vector<std::string>& texts)
{
    std::vector<UUID> ids;
    for (const auto& text : texts)
        ids.push_back(identifierArgument(text));
    return ids;
}

/// The options that name what work is assigned to.
struct TargetOptions {
    const std::string& client;
    const std::string& project;
    const std::optional<std::string>& billable;
};

TargetOptions targetOptions(Verb& verb)
{
    return {verb.requiredOption("--client", "CLIENT", "The client"),
            verb.requiredOption("--project", "PROJECT", "The project"),
            verb.choice("--billable", yesAndNo(), "Instead of the project's default")};
}

WorkTarget target(Session& session, const TargetOptions& options)
{
    const auto directory = orRefuse(ClientBook(session.store()).directory());
    const auto client = clientArgument(options.client, directory);
    return {client, projectArgument(options.project, directory, client),
            options.billable ? std::optional(yesOrNo(*options.billable)) : std::nullopt};
}

DayArgument day(Session& session, const std::string& text)
{
    return dayArgument(text, session.calendar(), session.now());
}

void print(Session& session, const CalendarContext& calendar, const EditedWork& work)
{
    if (session.isJSON())
        session.printJSON([&](JsonWriter& json) { writeMembers(json, work); });
    else
        printWork(session, calendar, work.blocks, work.items);
}

void print(Session& session, const CalendarContext& calendar, const std::vector<ReviewedWorkItem>& items)
{
    if (!session.isJSON()) {
        printWork(session, calendar, {}, items);
        return;
    }
    session.printJSON([&](JsonWriter& json) { recordArray(json, "items", items); });
}

/// A verb over a selection that changes no more than it: `work confirm DAY ID…` and its like.
template <typename Result>
void addSelectionVerb(Noun& noun, const char* name, const char* description,
                      DayEdited<Result> (DayBook::*edit)(const LocalDay&, std::span<const UUID>))
{
    auto verb = noun.verb(name, description);
    const auto selected = selection(verb);
    verb.runs([=](Session& session) {
        const auto when = day(session, selected.day);
        DayBook book(session.store(), when.calendar);
        print(session, when.calendar, orRefuse((book.*edit)(when.day, identifiers(selected.ids))));
    });
}

void addAssign(Noun& noun)
{
    auto verb = noun.verb("assign", "Assign work to a client and project");
    const auto selected = selection(verb);
    const auto options = targetOptions(verb);
    verb.runs([=](Session& session) {
        const auto when = day(session, selected.day);
        DayBook book(session.store(), when.calendar);
        print(session, when.calendar,
              orRefuse(book.assign(when.day, identifiers(selected.ids), target(session, options))));
    });
}

void addSplit(Noun& noun)
{
    auto verb = noun.verb("split", "Cut a block or item in two");
    const auto& dayText = verb.argument("DAY", "The day");
    const auto& id = verb.argument("ID", "A block or item of that day");
    const auto& at = verb.requiredOption("--at", "TIME", "Where to cut");
    verb.runs([&](Session& session) {
        const auto when = day(session, dayText);
        const auto time = timeArgument(at, when);
        DayBook book(session.store(), when.calendar);
        print(session, when.calendar, orRefuse(book.split(when.day, identifierArgument(id), time)));
    });
}

void addDescribe(Noun& noun)
{
    auto verb = noun.verb("describe", "Describe work; an empty text removes the description");
    const auto& dayText = verb.argument("DAY", "The day");
    const auto& id = verb.argument("ID", "A block or item of that day");
    const auto& text = verb.argument("TEXT", "The description");
    verb.runs([&](Session& session) {
        const auto when = day(session, dayText);
        DayBook book(session.store(), when.calendar);
        print(session, when.calendar, orRefuse(book.describe(when.day, identifierArgument(id), text)));
    });
}

void addAdd(Noun& noun)
{
    auto verb = noun.verb("add", "Add missing work");
    const auto& dayText = verb.argument("DAY", "The day");
    const auto& from = verb.requiredOption("--from", "TIME", "Its start");
    const auto& to = verb.requiredOption("--to", "TIME", "Its end");
    const auto options = targetOptions(verb);
    const auto& description = verb.option("--description", "TEXT", "What was done");
    verb.runs([&, options](Session& session) {
        const auto when = day(session, dayText);
        const Interval time{timeArgument(from, when), timeArgument(to, when)};
        DayBook book(session.store(), when.calendar);
        print(session, when.calendar,
              orRefuse(book.add(when.day, time, target(session, options), description)));
    });
}

void addConvertIdle(Noun& noun)
{
    auto verb = noun.verb("convert-idle", "Make work of idle time");
    const auto& dayText = verb.argument("DAY", "The day");
    const auto& segment = verb.argument("SEGMENT", "An idle segment of that day");
    const auto options = targetOptions(verb);
    const auto& description = verb.option("--description", "TEXT", "What was done");
    verb.runs([&, options](Session& session) {
        const auto when = day(session, dayText);
        DayBook book(session.store(), when.calendar);
        print(session, when.calendar,
              orRefuse(book.convertIdle(when.day, SegmentID{identifierArgument(segment)},
                                        target(session, options), description)));
    });
}

} // namespace

void addWorkCommands(CommandTree& tree)
{
    auto noun = tree.noun("work", "Review a day's work");
    addAssign(noun);
    addSelectionVerb(noun, "confirm", "Keep what blocks are attributed to", &DayBook::confirm);
    addSelectionVerb(noun, "ignore", "Mark as not work", &DayBook::ignore);
    addSelectionVerb(noun, "restore", "Restore what was marked as not work", &DayBook::restore);
    addSelectionVerb(noun, "freeze", "Make blocks reviewed items", &DayBook::freeze);
    addSplit(noun);
    addSelectionVerb(noun, "merge", "Make one item of adjacent work", &DayBook::merge);
    addDescribe(noun);
    addAdd(noun);
    addConvertIdle(noun);
}

} // namespace stintbook
