#include "App/DayEditProblem.h"

#include <fmt/format.h>

namespace stintbook {

namespace {

std::string sentence(const UnknownWork& unknown)
{
    return fmt::format("No work on this day has the identifier {}.", unknown.id.upperCaseText());
}

std::string sentence(EditHistoryProblem problem)
{
    switch (problem) {
    case EditHistoryProblem::nothingToUndo:
        return "There is no edit to undo.";
    case EditHistoryProblem::nothingToRedo:
        return "There is no edit to redo.";
    case EditHistoryProblem::dayChangedSince:
        return "The day has changed since, so the edit was left as it is.";
    }
    return {};
}

template <typename Problem> std::string sentence(const Problem& problem)
{
    return std::string(message(problem));
}

} // namespace

std::string message(const DayEditProblem& problem)
{
    return std::visit([](const auto& which) { return sentence(which); }, problem);
}

} // namespace stintbook
