#pragma once

#include <expected>
#include <string>
#include <variant>

#include "Base/Identifier.h"
#include "Domain/PersistenceError.h"
#include "Review/ReadyToBill.h"
#include "Review/ReviewedEditProblem.h"

namespace stintbook {

/// No block or item of the day has that identifier.
struct UnknownWork {
    UUID id;
};

/// Why an edit was neither taken back nor done again.
enum class EditHistoryProblem {
    nothingToUndo,
    nothingToRedo,
    /// By another edit, another process or a deletion.
    dayChangedSince,
};

/// Why an edit did not happen. Nothing was changed.
using DayEditProblem =
    std::variant<PersistenceError, ReviewedEditProblem, ReadyToBillBlocker, UnknownWork, EditHistoryProblem>;
std::string message(const DayEditProblem& problem);

template <typename T> using DayEdited = std::expected<T, DayEditProblem>;

} // namespace stintbook
