#include "Screens/Review/DayView.h"

#include "App/ClientBook.h"
#include "Base/Try.h"
#include "Screens/Models/Texts.h"
#include "Store/PersistentReviewStore.h"

namespace stintbook {

namespace {

QString titleOf(const EditHistory& history, EditHistory::Direction direction)
{
    const auto* edit = history.next(direction);
    return edit == nullptr ? QString() : text(title(edit->kind));
}

} // namespace

std::vector<WorkBlockSegment> DayView::lineage(const ReviewSubject& subject) const
{
    if (const auto* block = std::get_if<WorkBlock>(&subject))
        return block->lineage;
    std::vector<WorkBlockSegment> pieces;
    for (const auto& slice : std::get<ReviewedWorkItem>(subject).slices) {
        const auto recorded = segments.find(slice.segmentID);
        if (recorded == segments.end())
            continue;
        auto& piece = pieces.emplace_back(WorkBlockSegment{.segment = *recorded->second,
                                                           .sourceSegmentID = slice.segmentID,
                                                           .evaluation = {},
                                                           .review = {}});
        piece.segment.start = slice.start;
        piece.segment.end = slice.end;
    }
    return pieces;
}

Stored<std::shared_ptr<const DayView>> readDay(const DayBook& book, const LocalDay& day, OpenedStore& store,
                                               const EditHistory& history)
{
    auto view = std::make_shared<DayView>();
    view->day = TRY(book.open(day));
    for (const auto& segment : view->day.recorded)
        view->segments.emplace(segment.id, &segment);
    view->calendar = CalendarContext::inZone(day.timeZoneIdentifier).value_or(book.calendar());
    view->directory = TRY(ClientBook(store).directory());
    for (auto& rule : TRY(store.review().attributionRules()))
        view->rules.emplace(rule.id, std::move(rule));
    view->undoTitle = titleOf(history, EditHistory::Direction::undo);
    view->redoTitle = titleOf(history, EditHistory::Direction::redo);
    view->subjects = subjectRows(*view);
    view->spans = spanRows(*view);
    return view;
}

} // namespace stintbook
