#include "App/HistoryRetention.h"

#include <algorithm>
#include <cstdint>

#include <fmt/format.h>

#include "Base/NumberText.h"
#include "Store/ActivityDeletion.h"

namespace stintbook {

namespace {

/// More days than the calendar has.
constexpr std::int64_t mostDays = 4'000'000;

std::string shownDates(std::size_t count)
{
    return fmt::format("{} local calendar {}", count, count == 1 ? "date" : "dates");
}

std::size_t dayCount(const LocalDayRange& range, const CalendarContext& calendar)
{
    const auto counting = countingCalendar(range, calendar);
    const auto end = extent(range, counting).end;
    std::size_t count = 0;
    for (auto at = range.from().start; at < end; at = counting.nextDayStart(at))
        ++count;
    return count;
}

} // namespace

std::optional<LocalDay> retentionCutoff(const RetentionWindow& window, const CalendarContext& calendar,
                                        Instant now)
{
    const auto count = window.dayCount();
    if (!count || *count > mostDays)
        return std::nullopt;
    auto date = calendar.dateOf(now).plusDays(1 - static_cast<int>(*count));
    if (date.year < 1)
        return std::nullopt;
    // A date that the zone never had keeps what follows it.
    auto day = calendar.dayOn(date);
    while (!day) {
        date = date.plusDays(1);
        day = calendar.dayOn(date);
    }
    return day;
}

std::string label(const RetentionWindow& window)
{
    const auto count = window.dayCount();
    if (!count)
        return "until deleted";
    return fmt::format("{} day{}", *count, *count == 1 ? "" : "s");
}

std::optional<RetentionWindow> retentionWindowFrom(std::string_view text)
{
    if (text == "forever")
        return RetentionWindow::keepUntilDeleted();
    const auto count = numberIn<std::int64_t>(text);
    return count ? RetentionWindow::days(*count) : std::nullopt;
}

std::string message(const HistoryKept& problem)
{
    return problem.sentence;
}

HistoryOutcome keep(AppPreferences& preferences, const RetentionWindow& window,
                    const DeletedActivity& deleted)
{
    if (preferences.setRetentionWindow(window))
        return deleted;
    const auto start = deleted.dayCount > 0 ? removedDays(deleted) + ", but the" : std::string("The");
    return std::unexpected(
        HistoryKept{start + " preferences could not be saved, so Keep history was not changed."});
}

std::string removedDays(const DeletedActivity& deleted)
{
    return fmt::format("Removed {} day{} of observed activity", deleted.dayCount,
                       deleted.dayCount == 1 ? "" : "s");
}

std::string message(const RetentionChangeUnknown& /*problem*/)
{
    return "Keep history was not changed: the activity store could not be read, so what the change would "
           "remove is unknown. Choose again once the store is answering.";
}

std::expected<RetentionChangeRequest, RetentionChangeUnknown> retentionChange(StoreDatabase& store,
                                                                              const RetentionWindow& present,
                                                                              const RetentionWindow& chosen,
                                                                              const CalendarContext& calendar,
                                                                              Instant now)
{
    RetentionChangeRequest request{.window = chosen, .days = {}, .scope = std::nullopt};
    const auto cutoff = retentionCutoff(chosen, calendar, now);
    if (!cutoff || chosen.isLongerThan(present))
        return request;
    const DaysBefore older{*cutoff};
    auto days = recordedDays(store, older, calendar);
    if (!days)
        return std::unexpected(RetentionChangeUnknown{});
    request.days = *std::move(days);
    if (!request.days.empty())
        request.scope = older;
    return request;
}

DeletionConfirmation confirmation(const RetentionChangeRequest& request,
                                  const std::optional<std::string>& shownRange)
{
    return {.title = "Remove activity older than " + label(request.window),
            .text =
                fmt::format("This removes observed activity from {} — {}. Reviewed work, day approvals and "
                            "exported records are not affected.",
                            shownRange.value_or("—"), shownDates(request.days.size())),
            .scope = std::nullopt};
}

DeletionConfirmation confirmation(const ActivityDeletionRequest& request, const CalendarContext& calendar)
{
    const auto* range = std::get_if<LocalDayRange>(&request);
    if (range == nullptr)
        return {.title = "Delete all activity data?",
                .text = "This removes retained activity data from this computer.",
                .scope = std::nullopt};
    return {.title = "Delete selected history?",
            .text = "This action removes the selected history.",
            .scope = "Selected date range, " + shownDates(dayCount(*range, calendar))};
}

std::string message(const ActivityDeletionRequest& request, const ActivityDeletionProblem& problem)
{
    if (!std::holds_alternative<PersistenceError>(problem))
        return message(problem);
    return std::holds_alternative<AllHistory>(request)
        ? "All activity data could not be deleted. Nothing was removed."
        : "The selected history could not be deleted. Nothing was removed.";
}

} // namespace stintbook
