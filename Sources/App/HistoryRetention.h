#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "App/ActivityDeletionCoordinator.h"
#include "App/AppPreferences.h"
#include "App/RetentionWindow.h"
#include "Base/Instant.h"
#include "Domain/ActivityDataScope.h"
#include "Domain/CalendarContext.h"
#include "Domain/DeletedActivity.h"
#include "Store/StoreDatabase.h"

namespace stintbook {

/// The first day that a window keeps: `days(1)` keeps today alone. Absent where it keeps every day.
std::optional<LocalDay> retentionCutoff(const RetentionWindow& window, const CalendarContext& calendar,
                                        Instant now);

/// "30 days", "1 day", "until deleted".
std::string label(const RetentionWindow& window);
/// As people type it: a number of days, or "forever". Absent for anything else.
std::optional<RetentionWindow> retentionWindowFrom(std::string_view text);

/// A newly chosen window, and what it would remove, to be confirmed before it is applied.
struct RetentionChangeRequest {
    RetentionWindow window;
    /// Days with observed activity that would go, in order; none for a window that is longer than the present
    /// one.
    std::vector<LocalDay> days;
    /// What applying the change deletes, whenever that is; absent where that is nothing.
    std::optional<DaysBefore> scope;
};

/// What was asked for was not done, or not all of it; what and why, in a sentence.
struct HistoryKept {
    std::string sentence;
};
std::string message(const HistoryKept& problem);
using HistoryOutcome = std::expected<DeletedActivity, HistoryKept>;

/// Stores the window of a change that has deleted what it was to delete. Where the window cannot be stored, what
/// is removed stays so.
HistoryOutcome keep(AppPreferences& preferences, const RetentionWindow& window,
                    const DeletedActivity& deleted);

/// "Removed 3 days of observed activity"
std::string removedDays(const DeletedActivity& deleted);

/// The store could not be read, so that what a change would remove is unknown.
struct RetentionChangeUnknown { };
std::string message(const RetentionChangeUnknown& problem);

std::expected<RetentionChangeRequest, RetentionChangeUnknown> retentionChange(StoreDatabase& store,
                                                                              const RetentionWindow& present,
                                                                              const RetentionWindow& chosen,
                                                                              const CalendarContext& calendar,
                                                                              Instant now);

/// What is asked before something is deleted.
struct DeletionConfirmation {
    std::string title;
    std::string text;
    /// What exactly is meant, where the text does not say it.
    std::optional<std::string> scope;
};
/// The range of days as the reader's language shows it; absent where it cannot be shown.
DeletionConfirmation confirmation(const RetentionChangeRequest& request,
                                  const std::optional<std::string>& shownRange);
DeletionConfirmation confirmation(const ActivityDeletionRequest& request, const CalendarContext& calendar);

/// Why nothing of it was deleted.
std::string message(const ActivityDeletionRequest& request, const ActivityDeletionProblem& problem);

} // namespace stintbook
