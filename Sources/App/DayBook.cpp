#include "App/DayBook.h"

#include <algorithm>
#include <limits>
#include <ranges>
#include <set>
#include <utility>

#include <fmt/format.h>

#include "App/ClientBook.h"
#include "App/RecordedDay.h"
#include "Base/Try.h"
#include "Billing/BillingBook.h"
#include "Review/Assignment.h"
#include "Review/Disposition.h"
#include "Review/Freeze.h"
#include "Review/Merge.h"
#include "Review/MissingWork.h"
#include "Review/Split.h"
#include "Review/WorkBlockBuilder.h"
#include "Rules/AttributionEngine.h"
#include "Store/PersistentActivitySegmentRepository.h"
#include "Store/PersistentReviewStore.h"

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

Seconds total(const std::vector<WorkBlock>& blocks)
{
    Seconds sum;
    for (const auto& block : blocks) {
        if (!block.review.isIgnored)
            sum += block.interval().length();
    }
    return sum;
}

/// The items that were frozen from segments of which none is recorded any more.
std::set<ReviewedItemID> withoutDetails(const std::vector<ReviewedWorkItem>& items,
                                        const std::vector<ActivitySegment>& recorded)
{
    std::set<SegmentID> known;
    for (const auto& segment : recorded)
        known.insert(segment.id);
    std::set<ReviewedItemID> bare;
    for (const auto& item : items) {
        const bool hasDetails = std::ranges::any_of(
            item.slices, [&](const ReviewedSourceSlice& slice) { return known.contains(slice.segmentID); });
        if (!item.slices.empty() && !hasDetails)
            bare.insert(item.id);
    }
    return bare;
}

std::optional<ReviewedDayRevision> revisionIn(const std::map<std::string, std::string>& exportedRevisions,
                                              const LocalDay& day)
{
    const auto found = exportedRevisions.find(dayID(day));
    if (found == exportedRevisions.end())
        return std::nullopt;
    return ReviewedDayRevision{found->second};
}

/// The selected subjects, in the order of the identifiers.
DayEdited<std::vector<ReviewSubject>> subjects(const ReviewDay& day, std::span<const UUID> ids)
{
    std::vector<ReviewSubject> found;
    for (const auto& id : ids) {
        const auto block = std::ranges::find(day.blocks, id, &WorkBlock::id);
        const auto item = std::ranges::find(day.items, ReviewedItemID{id}, &ReviewedWorkItem::id);
        if (block != day.blocks.end())
            found.emplace_back(*block);
        else if (item != day.items.end())
            found.emplace_back(*item);
        else
            return std::unexpected(UnknownWork{id});
    }
    return found;
}

/// The subjects as an edit has left them: the blocks over the selected blocks' segments, the items that were
/// selected or written.
EditedWork afterwards(const ReviewDay& day, const std::vector<ReviewSubject>& selected,
                      const ReviewedLayerMutation& mutation)
{
    std::set<SegmentID> segments;
    std::set<ReviewedItemID> items;
    for (const auto& subject : selected) {
        if (const auto* block = std::get_if<WorkBlock>(&subject)) {
            for (const auto& entry : block->lineage)
                segments.insert(entry.segment.id);
        } else {
            items.insert(std::get<ReviewedWorkItem>(subject).id);
        }
    }
    for (const auto& item : mutation.upserts)
        items.insert(item.id);

    EditedWork work;
    std::ranges::copy_if(day.blocks, std::back_inserter(work.blocks), [&](const WorkBlock& block) {
        return std::ranges::any_of(block.lineage,
                                   [&](const auto& entry) { return segments.contains(entry.segment.id); });
    });
    std::ranges::copy_if(day.items, std::back_inserter(work.items),
                         [&](const ReviewedWorkItem& item) { return items.contains(item.id); });
    return work;
}

AttributionAssignment assignmentTo(const WorkTarget& target, const AssignmentDirectory& directory)
{
    const auto* project = directory.project(target.projectID);
    const bool isBillableByDefault = project == nullptr || project->defaultBillable;
    return {target.clientID, target.projectID, target.isBillable.value_or(isBillableByDefault)};
}

Edited<ReviewedLayerMutation> addWork(Interval when, const WorkTarget& target,
                                      const std::optional<std::string>& description,
                                      const EditContext& context)
{
    const auto assignment = assignmentTo(target, context.directory);
    return addMissingWork({.start = when.start,
                           .end = when.end,
                           .clientID = assignment.clientID,
                           .projectID = assignment.projectID,
                           .billable = assignment.isBillable,
                           .description = description},
                          context);
}

} // namespace

std::string message(const DayEditProblem& problem)
{
    return std::visit([](const auto& which) { return sentence(which); }, problem);
}

/// What a day is computed from.
struct DayBook::Loaded {
    ReviewDay content;
    std::vector<ActivitySegment> segments;
    DaySummary recorded;
    std::set<ReviewedItemID> itemsWithoutDetails;
    AssignmentDirectory directory;
    CalendarContext calendar;
    std::optional<ReviewedDayApproval> approval;
};

struct DayBook::Left {
    Loaded day;
    std::int64_t dataVersion = 0;
    std::int64_t ownChanges = 0;
};

DayBook::DayBook(OpenedStore& store, CalendarContext calendar, EditHistory* history)
    : m_store(store)
    , m_calendar(std::move(calendar))
    , m_history(history)
{
}

DayBook::~DayBook() = default;

CalendarContext DayBook::calendarOf(const LocalDay& day) const
{
    return CalendarContext::inZone(day.timeZoneIdentifier).value_or(m_calendar);
}

Stored<DayBook::Loaded> DayBook::load(const LocalDay& day) const
{
    return load(day, TRY(m_store.segments().segments(calendarOf(day).boundsOf(day))));
}

Stored<DayBook::Loaded> DayBook::load(const LocalDay& day, std::vector<ActivitySegment> segments) const
{
    auto calendar = calendarOf(day);
    const auto bounds = calendar.boundsOf(day);
    auto& review = m_store.review();

    auto recorded = TRY(recordedDay(m_store, bounds, std::move(segments)));
    auto directory = TRY(ClientBook(m_store).directory());
    const AttributionEngine engine(TRY(review.attributionRules()), directory);
    const ExclusionEngine exclusion(TRY(review.exclusionRules()));

    auto items = TRY(review.items(day));
    auto approval = TRY(review.approval(day));
    auto bare = withoutDetails(items, recorded.segments);
    auto summary = daySummary(day, bounds, recorded.segments);
    auto blocks = WorkBlockBuilder(calendar, engine, exclusion).blocks(recorded.free, recorded.reviews);
    return Loaded{.content = {.day = day,
                              .bounds = bounds,
                              .freeSegments = std::move(recorded.free),
                              .blocks = std::move(blocks),
                              .items = std::move(items)},
                  .segments = std::move(recorded.segments),
                  .recorded = std::move(summary),
                  .itemsWithoutDetails = std::move(bare),
                  .directory = std::move(directory),
                  .calendar = std::move(calendar),
                  .approval = std::move(approval)};
}

Stored<DayBook::Loaded> DayBook::loadAfterEdit(const LocalDay& day) const
{
    const auto left = std::exchange(m_left, nullptr);
    const bool isSame = left && left->day.content.day == day
        && left->dataVersion == TRY(m_store.database().dataVersion())
        && left->ownChanges == m_store.database().ownChanges();
    if (isSame)
        return std::move(left->day);
    return load(day);
}

Stored<OpenedDay> DayBook::open(const LocalDay& day) const
{
    return m_store.database().read([&](StoreConnection&) -> Stored<OpenedDay> {
        auto loaded = TRY(loadAfterEdit(day));
        const auto billing = TRY(m_store.review().billing());
        auto reading = stintbook::reading(loaded.content, loaded.approval, loaded.directory, billing);

        OpenedDay opened;
        opened.summary = workReviewSummary(loaded.recorded, loaded.content);
        opened.blockers = eligibility(loaded.content).blockers;
        opened.status = reading.isReady ? ReviewedDayStatus::ready : ReviewedDayStatus::notReady;
        opened.recordsState = stintbook::recordsState(TRY(m_store.review().exportedRevision(day)),
                                                      reading.revision, opened.status);
        opened.revision = std::move(reading.revision);
        opened.itemsWithoutDetails = std::move(loaded.itemsWithoutDetails);
        opened.totals = totals(reading.lines);
        opened.work = std::move(reading.work);
        opened.lines = std::move(reading.lines);
        opened.currency = reading.currency;
        opened.unreviewedDuration = total(loaded.content.blocks);
        opened.notReadyReason = std::move(reading.notReadyReason);
        opened.content = std::move(loaded.content);
        opened.recorded = std::move(loaded.segments);
        return opened;
    });
}

Stored<ListedDay> DayBook::summarize(const LocalDay& day, const ExclusionEngine& exclusion,
                                     const std::map<std::string, std::string>& exportedRevisions) const
{
    auto& review = m_store.review();
    const auto bounds = calendarOf(day).boundsOf(day);
    const auto [segments, free, reviews] = TRY(recordedDay(m_store, bounds));
    const auto items = TRY(review.items(day));
    const auto approval = TRY(review.approval(day));

    ListedDay listed;
    listed.summary = daySummary(day, bounds, segments);
    for (const auto& piece : free) {
        const auto found = reviews.find(piece.sourceSegmentID);
        const bool isIgnored = found != reviews.end() && found->second.isIgnored;
        if (piece.segment.kind == ActivityKind::work && !isIgnored && !exclusion.excludes(piece.segment))
            listed.unreviewedDuration += piece.segment.length();
    }
    const auto current = revision(items);
    listed.hasReviewedWork = !items.empty();
    listed.recordsState =
        stintbook::recordsState(revisionIn(exportedRevisions, day), current, status(approval, current));
    return listed;
}

Stored<std::vector<LocalDay>> DayBook::days(const std::optional<LocalDay>& from,
                                            const std::optional<LocalDay>& to) const
{
    return m_store.database().read([&](StoreConnection&) -> Stored<std::vector<LocalDay>> {
        std::set<LocalDay> days;
        const auto isAsked = [&](const LocalDay& day) {
            return (!from || day.start >= from->start) && (!to || day.start <= to->start);
        };
        for (const auto& day : TRY(m_store.review().reviewedDays(std::nullopt))) {
            if (isAsked(day))
                days.insert(day);
        }
        // Days without a record are passed over at once, however many lie between two recordings.
        auto at = from ? from->start : Instant{-std::numeric_limits<double>::infinity()};
        while (const auto recorded = TRY(m_store.segments().firstRecorded(at))) {
            const auto day = m_calendar.dayOf(*recorded);
            if (to && day.start > to->start)
                break;
            if (isAsked(day))
                days.insert(day);
            at = m_calendar.nextDayStart(*recorded);
        }
        return std::vector(days.begin(), days.end());
    });
}

Stored<std::vector<ListedDay>> DayBook::list(const std::optional<LocalDay>& from,
                                             const std::optional<LocalDay>& to) const
{
    return m_store.database().read([&](StoreConnection&) -> Stored<std::vector<ListedDay>> {
        const auto days = TRY(this->days(from, to));
        const ExclusionEngine exclusion(TRY(m_store.review().exclusionRules()));
        std::map<std::string, std::string> exportedRevisions;
        for (auto& exported : TRY(m_store.review().exportedDays()))
            exportedRevisions.emplace(std::move(exported.dayID), std::move(exported.revision));
        std::vector<ListedDay> listed;
        for (const auto& day : days)
            listed.push_back(TRY(summarize(day, exclusion, exportedRevisions)));
        return listed;
    });
}

/// Reads the day, computes an edit and writes it, alone in writing; then answers.
template <typename Compute, typename Answer>
auto DayBook::edit(EditKind kind, const LocalDay& day, std::span<const UUID> ids, Compute compute,
                   Answer answer)
{
    using Result = decltype(answer(std::declval<std::vector<ReviewSubject>&>(),
                                   std::declval<ReviewedLayerMutation&>(), std::declval<ReviewDay&>()));
    std::optional<DayEdit> done;
    std::unique_ptr<Left> left;
    auto result = m_store.database().write([&](StoreConnection&) -> Result {
        auto loaded = TRY(load(day));
        const auto selected = TRY(subjects(loaded.content, ids));
        const EditContext context{loaded.content, loaded.directory, loaded.calendar};
        const auto mutation = TRY(compute(selected, context));
        if (m_history != nullptr)
            done = DayEdit{.kind = kind, .day = day, .before = {}, .after = {}};
        if (done)
            done->before = TRY(layer(day, mutation.reviewUpserts));
        TRY(m_store.review().apply(mutation));
        if (done)
            done->after = TRY(layer(day, mutation.reviewUpserts));
        // What was recorded is what it was.
        left = std::make_unique<Left>(TRY(load(day, std::move(loaded.segments))),
                                      TRY(m_store.database().dataVersion()), m_store.database().ownChanges());
        return answer(selected, mutation, left->day.content);
    });
    if (!result)
        return result;
    m_left = std::move(left);
    if (done)
        m_history->add(*std::move(done));
    return result;
}

template <typename Compute>
DayEdited<EditedWork> DayBook::editInPlace(EditKind kind, const LocalDay& day, std::span<const UUID> ids,
                                           Compute compute)
{
    return edit(kind, day, ids, compute,
                [](const std::vector<ReviewSubject>& selected, const ReviewedLayerMutation& mutation,
                   const ReviewDay& after) -> DayEdited<EditedWork> {
                    return afterwards(after, selected, mutation);
                });
}

template <typename Compute>
DayEdited<std::vector<ReviewedWorkItem>> DayBook::editItems(EditKind kind, const LocalDay& day,
                                                            std::span<const UUID> ids, Compute compute)
{
    return edit(kind, day, ids, compute,
                [](const std::vector<ReviewSubject>&, const ReviewedLayerMutation& mutation, const ReviewDay&)
                    -> DayEdited<std::vector<ReviewedWorkItem>> { return mutation.upserts; });
}

DayEdited<EditedWork> DayBook::assign(const LocalDay& day, std::span<const UUID> ids,
                                      const WorkTarget& target)
{
    return editInPlace(EditKind::assign, day, ids, [&](const auto& selected, const EditContext& context) {
        return stintbook::assign(selected, assignmentTo(target, context.directory), context);
    });
}

DayEdited<EditedWork> DayBook::confirm(const LocalDay& day, std::span<const UUID> ids)
{
    return editInPlace(EditKind::confirm, day, ids, [](const auto& selected, const EditContext& context) {
        return stintbook::confirm(selected, context);
    });
}

DayEdited<EditedWork> DayBook::ignore(const LocalDay& day, std::span<const UUID> ids)
{
    return editInPlace(EditKind::ignore, day, ids, [](const auto& selected, const EditContext& context) {
        return stintbook::ignore(selected, context);
    });
}

DayEdited<EditedWork> DayBook::restore(const LocalDay& day, std::span<const UUID> ids)
{
    return editInPlace(EditKind::restore, day, ids, [](const auto& selected, const EditContext&) {
        return Edited<ReviewedLayerMutation>(stintbook::restore(selected));
    });
}

DayEdited<std::vector<ReviewedWorkItem>> DayBook::freeze(const LocalDay& day, std::span<const UUID> ids)
{
    return editItems(EditKind::freeze, day, ids, [](const auto& selected, const EditContext& context) {
        return stintbook::freeze(selected, context);
    });
}

DayEdited<std::vector<ReviewedWorkItem>> DayBook::split(const LocalDay& day, UUID id, Instant at)
{
    return editItems(EditKind::split, day, std::span(&id, 1),
                     [&](const auto& selected, const EditContext& context) {
                         return stintbook::split(selected.front(), at, context);
                     });
}

DayEdited<std::vector<ReviewedWorkItem>> DayBook::merge(const LocalDay& day, std::span<const UUID> ids)
{
    return editItems(EditKind::merge, day, ids, [](const auto& selected, const EditContext& context) {
        return stintbook::merge(selected, context);
    });
}

DayEdited<std::vector<ReviewedWorkItem>> DayBook::describe(const LocalDay& day, UUID id,
                                                           const std::string& text)
{
    return editItems(EditKind::describe, day, std::span(&id, 1),
                     [&](const auto& selected, const EditContext& context) {
                         return stintbook::describe(selected.front(), text, context);
                     });
}

DayEdited<std::vector<ReviewedWorkItem>> DayBook::add(const LocalDay& day, Interval when,
                                                      const WorkTarget& target,
                                                      const std::optional<std::string>& description)
{
    return editItems(EditKind::addWork, day, {}, [&](const auto&, const EditContext& context) {
        return addWork(when, target, description, context);
    });
}

DayEdited<std::vector<ReviewedWorkItem>> DayBook::convertIdle(const LocalDay& day, SegmentID idle,
                                                              const WorkTarget& target,
                                                              const std::optional<std::string>& description)
{
    return editItems(EditKind::convertIdle, day, {},
                     [&](const auto&, const EditContext& context) -> DayEdited<ReviewedLayerMutation> {
                         const auto when = idleTime(idle, context.day);
                         if (!when)
                             return std::unexpected(UnknownWork{idle.uuid});
                         return TRY(addWork(*when, target, description, context));
                     });
}

DayEdited<ReviewedDayApproval> DayBook::markReady(const LocalDay& day, Instant now)
{
    return edit(
        EditKind::markReady, day, {},
        [&](const auto&, const EditContext& context) -> DayEdited<ReviewedLayerMutation> {
            auto mutation = stintbook::markReady(context, now);
            if (!mutation) {
                return std::unexpected(std::visit([](const auto& refusal) { return DayEditProblem(refusal); },
                                                  mutation.error()));
            }
            return *std::move(mutation);
        },
        [](const auto&, const ReviewedLayerMutation& mutation,
           const ReviewDay&) -> DayEdited<ReviewedDayApproval> { return *mutation.approval; });
}

Stored<ReviewedLayer> DayBook::layer(const LocalDay& day,
                                     const std::map<SegmentID, SegmentReview>& segments) const
{
    ReviewedLayer layer;
    layer.items = TRY(m_store.review().items(day));
    layer.approval = TRY(m_store.review().approval(day));
    const auto ids = std::views::keys(segments);
    const auto stored = TRY(m_store.review().reviews(std::vector(ids.begin(), ids.end())));
    for (const auto& id : ids) {
        const auto found = stored.find(id);
        layer.reviews.emplace(id, found == stored.end() ? SegmentReview{} : found->second);
    }
    return layer;
}

DayEdited<DayEdit> DayBook::repeat(EditHistory::Direction direction)
{
    const bool isUndo = direction == EditHistory::Direction::undo;
    const auto* next = m_history == nullptr ? nullptr : m_history->next(direction);
    if (next == nullptr)
        return std::unexpected(isUndo ? EditHistoryProblem::nothingToUndo
                                      : EditHistoryProblem::nothingToRedo);

    auto edit = *next;
    const auto& from = isUndo ? edit.after : edit.before;
    const auto& to = isUndo ? edit.before : edit.after;
    auto result = m_store.database().write([&](StoreConnection&) -> DayEdited<void> {
        if (TRY(layer(edit.day, from.reviews)) != from)
            return std::unexpected(EditHistoryProblem::dayChangedSince);
        return m_store.review().apply(difference(from, to));
    });
    if (result) {
        m_history->move(direction);
        return edit;
    }
    if (std::holds_alternative<EditHistoryProblem>(result.error()))
        m_history->drop(direction);
    return std::unexpected(std::move(result).error());
}

} // namespace stintbook
