#include "Screens/Review/DayView.h"

#include <unordered_set>
#include <utility>

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

std::unordered_map<SegmentID, const ActivitySegment*> recordOf(const std::vector<ReviewedWorkItem>& items,
                                                               const std::vector<ActivitySegment>& recorded)
{
    std::unordered_set<SegmentID> wanted;
    for (const auto& item : items) {
        for (const auto& slice : item.slices)
            wanted.insert(slice.segmentID);
    }
    std::unordered_map<SegmentID, const ActivitySegment*> found;
    for (const auto& segment : recorded) {
        if (wanted.contains(segment.id))
            found.emplace(segment.id, &segment);
    }
    return found;
}

} // namespace

std::vector<WorkBlockSegment> DayView::lineage(const ReviewedWorkItem& item) const
{
    std::vector<WorkBlockSegment> pieces;
    for (const auto& slice : item.slices) {
        const auto recorded = frozen.find(slice.segmentID);
        if (recorded == frozen.end())
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

std::vector<WorkBlockSegment> DayView::lineage(const ReviewSubject& subject) const
{
    if (const auto* block = std::get_if<WorkBlock>(&subject))
        return block->lineage;
    return lineage(std::get<ReviewedWorkItem>(subject));
}

Stored<std::shared_ptr<const DayView>> readDay(const DayBook& book, const LocalDay& day,
                                               StoreDesk::Workplace& place,
                                               const std::shared_ptr<const DayView>& shown)
{
    using View = std::shared_ptr<const DayView>;
    return place.store.database().read([&](StoreConnection&) -> Stored<View> {
        auto calendar = CalendarContext::inZone(day.timeZoneIdentifier).value_or(book.calendar());
        const auto version = TRY(place.store.database().dataVersion());
        // An edit that cannot be taken back any more leaves the store as it is.
        auto undoTitle = titleOf(place.session.history, EditHistory::Direction::undo);
        auto redoTitle = titleOf(place.session.history, EditHistory::Direction::redo);
        const bool isSame = shown && shown->dataVersion == version && shown->content().day == day
            && shown->calendar == calendar && shown->undoTitle == undoTitle && shown->redoTitle == redoTitle;
        if (isSame)
            return shown;

        auto view = std::make_shared<DayView>();
        view->dataVersion = version;
        view->calendar = std::move(calendar);
        view->day = TRY(book.open(day));
        view->frozen = recordOf(view->content().items, *view->day.loaded->recorded);
        for (auto& rule : TRY(place.store.review().attributionRules()))
            view->rules.emplace(rule.id, std::move(rule));
        view->undoTitle = std::move(undoTitle);
        view->redoTitle = std::move(redoTitle);
        view->subjects = subjectRows(*view);
        view->spans = spanRows(*view);
        return view;
    });
}

} // namespace stintbook
