#include <fmt/format.h>

#include "App/HistoryDesk.h"
#include "CommandLine/Arguments.h"
#include "CommandLine/CommandTree.h"
#include "CommandLine/Formatting.h"
#include "CommandLine/Progress.h"
#include "Platform/SessionBusInstance.h"

namespace stintbook {

namespace {

/// Everything that the commands of this chapter work with.
struct Desk {
    Desk(Session& session, CalendarContext calendar)
        : file(session.preferences())
        , preferences(file)
        , history(session.environment(), running, preferences, std::move(calendar))
        , errors(session.errors())
    {
    }

    /// Shown until the last copy of it is gone.
    DeletionProgress shown(std::string_view what)
    {
        return [progress = std::make_shared<Progress>(errors), what](double done) {
            progress->show(fmt::format("{} {:.0f} %", what, done * 100));
        };
    }

    PreferencesFile file;
    AppPreferences preferences;
    SessionBusInstance running;
    HistoryDesk history;
    std::ostream& errors;
};

/// What would happen, and that it takes a yes.
[[noreturn]] void askToConfirm(const DeletionConfirmation& confirmation)
{
    auto text = confirmation.title + '\n' + confirmation.text + '\n';
    if (confirmation.scope)
        text += *confirmation.scope + '\n';
    throw Refusal{text + "Nothing was changed. Repeat the command with --yes to confirm."};
}

void printDeleted(Session& session, const DeletedActivity& deleted, const std::string& sentence)
{
    if (deleted.remains == DeletedActivity::Remains::leftForTheNextStart)
        session.errors()
            << "Another program is reading an older state of the store, so that the deleted records are "
               "still in its files. They go when Velloran starts the next time.\n";
    if (session.isJSON())
        session.printJSON([&](JsonWriter& json) { json.member("removedDays", deleted.dayCount); });
    else
        session.output() << sentence << '\n';
}

/// "1 Nov 2026 – 20 Nov 2026"
std::string shownRange(const Session& session, const CalendarContext& calendar,
                       const std::vector<LocalDay>& days)
{
    const auto locale = session.locale("LC_TIME");
    const auto first = shownDate(days.front(), calendar, locale);
    return days.size() == 1 ? first : first + " – " + shownDate(days.back(), calendar, locale);
}

RetentionWindow windowArgument(const std::string& text)
{
    const auto window = retentionWindowFrom(text);
    if (!window)
        throw WrongUsage{fmt::format("'{}' is no number of days, and not 'forever'.", text)};
    return *window;
}

void addDelete(Noun& noun)
{
    auto verb = noun.verb("delete", "Delete days with their review, or all that was recorded");
    const auto& from = verb.option("--from", "DAY", "The first day");
    const auto& to = verb.option("--to", "DAY", "The last day");
    const auto& all = verb.flag("--all", "Every recorded day");
    const auto& isConfirmed = verb.flag("--yes", "Do it; without, it is only told what would be deleted");
    verb.runs([&](Session& session) {
        if (all ? from || to : !from || !to)
            throw WrongUsage{"Choose a date range first, with --from and --to, or --all."};
        auto calendar = session.calendar();
        ActivityDeletionRequest request = AllHistory{};
        if (!all) {
            const auto first = dayArgument(*from, calendar, session.now());
            const auto range =
                LocalDayRange::between(first.day, dayArgument(*to, first.calendar, session.now()).day);
            if (!range)
                throw WrongUsage{"The last day comes before the first one."};
            request = *range;
            calendar = first.calendar;
        }
        if (!isConfirmed)
            askToConfirm(confirmation(request, calendar));

        Desk desk(session, calendar);
        const auto deleted = orRefuse(desk.history.deleteActivity(scopeOf(request), desk.shown("Deleting…")));
        printDeleted(session, deleted,
                     all ? "All activity data was deleted." : "The selected history was deleted.");
    });
}

void addRetention(Noun& noun)
{
    auto verb = noun.verb("retention", "For how many days observed activity is kept");
    const auto& text = verb.argument("DAYS", "How many, today included, or 'forever'");
    const auto& isConfirmed = verb.flag("--yes", "Also where that removes older activity");
    verb.runs([&](Session& session) {
        const auto window = windowArgument(text);
        const auto calendar = session.calendar();
        Desk desk(session, calendar);
        const auto request = orRefuse(desk.history.change(window, session.now()));
        if (!request.days.empty() && !isConfirmed)
            askToConfirm(confirmation(request, shownRange(session, calendar, request.days)));
        const auto deleted = orRefuse(desk.history.apply(request, desk.shown("Removing…")));
        const auto sentence = window.dayCount()
            ? fmt::format("Observed activity is kept for {}.", label(window))
            : "Observed activity is kept until it is deleted.";
        printDeleted(session, deleted,
                     deleted.dayCount > 0 ? sentence + " " + removedDays(deleted) + "." : sentence);
    });
}

void addCleanup(Noun& noun)
{
    auto verb = noun.verb("cleanup", "Remove the observed activity that is no longer to be kept");
    verb.runs([](Session& session) {
        Desk desk(session, session.calendar());
        if (!desk.preferences.retentionWindow().dayCount())
            return printDeleted(session, {},
                                "Observed activity is kept until it is deleted, so nothing was removed.");
        const auto deleted = orRefuse(desk.history.cleanUp(session.now(), desk.shown("Removing…")));
        printDeleted(session, deleted, removedDays(deleted) + ".");
    });
}

} // namespace

void addHistoryCommands(Noun& noun)
{
    addDelete(noun);
    addRetention(noun);
    addCleanup(noun);
}

} // namespace stintbook
