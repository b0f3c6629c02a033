#include "App/EditHistory.h"

#include <utility>

namespace stintbook {

std::string_view title(EditKind kind)
{
    switch (kind) {
    case EditKind::assign:
        return "Assign";
    case EditKind::confirm:
        return "Confirm";
    case EditKind::ignore:
        return "Ignore";
    case EditKind::restore:
        return "Restore";
    case EditKind::freeze:
        return "Freeze";
    case EditKind::split:
        return "Split";
    case EditKind::merge:
        return "Merge";
    case EditKind::describe:
        return "Describe";
    case EditKind::addWork:
        return "Add Work";
    case EditKind::convertIdle:
        return "Convert Idle Time";
    case EditKind::markReady:
        return "Mark Ready to Bill";
    }
    return {};
}

void EditHistory::add(DayEdit edit)
{
    m_undone.clear();
    m_done.push_back(std::move(edit));
    if (m_done.size() > most)
        m_done.erase(m_done.begin());
}

const DayEdit* EditHistory::next(Direction direction) const
{
    const auto& from = direction == Direction::undo ? m_done : m_undone;
    return from.empty() ? nullptr : &from.back();
}

void EditHistory::move(Direction direction)
{
    auto& from = edits(direction);
    auto& to = edits(direction == Direction::undo ? Direction::redo : Direction::undo);
    to.push_back(std::move(from.back()));
    from.pop_back();
}

void EditHistory::drop(Direction direction)
{
    edits(direction).pop_back();
}

} // namespace stintbook
