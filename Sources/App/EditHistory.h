#pragma once

#include <string_view>
#include <vector>

#include "Domain/LocalDay.h"
#include "Review/ReviewedLayer.h"

namespace stintbook {

enum class EditKind {
    assign,
    confirm,
    ignore,
    restore,
    freeze,
    split,
    merge,
    describe,
    addWork,
    convertIdle,
    markReady,
};

/// As a menu names it behind "Undo" and "Redo".
std::string_view title(EditKind kind);

/// One edit: what it may have changed, before and after it.
struct DayEdit {
    EditKind kind = EditKind::assign;
    LocalDay day;
    ReviewedLayer before;
    ReviewedLayer after;
};

/// The edits of a session, to be taken back and done again one by one. Knows nothing of the store.
class EditHistory {
public:
    /// The oldest edit gives way beyond so many.
    static constexpr std::size_t most = 200;

    /// Newly done: nothing can be done again any more.
    void add(DayEdit edit);

    enum class Direction { undo, redo };
    /// Null when there is none.
    const DayEdit* next(Direction direction) const;
    /// It was taken back, or done again.
    void move(Direction direction);
    /// It can never be: its work has changed since.
    void drop(Direction direction);

private:
    std::vector<DayEdit>& edits(Direction direction)
    {
        return direction == Direction::undo ? m_done : m_undone;
    }

    std::vector<DayEdit> m_done;
    std::vector<DayEdit> m_undone;
};

} // namespace stintbook
