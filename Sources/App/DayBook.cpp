#include "App/DayBook.h"

#include <limits>
#include <ranges>
#include <set>
#include <utility>

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
#include "Store/PersistentActivitySegmentRepository.h"
#include "Store/PersistentReviewStore.h"

namespace stintbook {

namespace {

Seconds total(const std::vector<WorkBlock>& blocks)
{
    Seconds sum;
    for (const auto& block : blocks) {
        if (!block.review.isIgnored)
            sum += block.interval().length();
    }
    return sum;
}

std::optional<ReviewedDayRevision> revisionIn(const std::map<std::string, std::string>& exportedRevisions,
                                              const LocalDay& day)
{
    const auto found = exportedRevisions.find(dayID(day));
    if (found == exportedRevisions.end())
        return std::nullopt;
    return ReviewedDayRevision{found->second};
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

DayBook::DayBook(OpenedStore& store, CalendarContext calendar, EditSession* session)
    : m_store(store)
    , m_calendar(std::move(calendar))
    , m_session(session)
{
}

CalendarContext DayBook::calendarOf(const LocalDay& day) const
{
    return CalendarContext::inZone(day.timeZoneIdentifier).value_or(m_calendar);
}

Stored<std::shared_ptr<const LoadedDay>> DayBook::load(const LocalDay& day) const
{
    const auto calendar = calendarOf(day);
    if (m_session == nullptr)
        return loadDay(m_store, day, calendar);
    const auto version = TRY(m_store.database().dataVersion());
    if (auto seen = m_session->seen.recall(day, calendar, version))
        return seen;
    auto loaded = TRY(loadDay(m_store, day, calendar));
    m_session->seen.keep(loaded, calendar, version);
    return loaded;
}

Stored<OpenedDay> DayBook::open(const LocalDay& day) const
{
    return m_store.database().read([&](StoreConnection&) -> Stored<OpenedDay> {
        OpenedDay opened;
        opened.loaded = TRY(load(day));
        const auto& content = opened.content();
        const auto billing = TRY(m_store.review().billing());
        auto reading =
            stintbook::reading(content, opened.loaded->approval, opened.loaded->directory, billing);

        opened.summary = workReviewSummary(opened.loaded->summary, content);
        opened.blockers = eligibility(content).blockers;
        opened.status = reading.isReady ? ReviewedDayStatus::ready : ReviewedDayStatus::notReady;
        opened.recordsState = stintbook::recordsState(TRY(m_store.review().exportedRevision(day)),
                                                      reading.revision, opened.status);
        opened.revision = std::move(reading.revision);
        opened.totals = totals(reading.lines);
        opened.work = std::move(reading.work);
        opened.lines = std::move(reading.lines);
        opened.currency = reading.currency;
        opened.unreviewedDuration = total(content.blocks);
        opened.notReadyReason = std::move(reading.notReadyReason);
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
        std::map<LocalDay, ListedDay> unknown;
        auto& known = m_session == nullptr
            ? unknown
            : m_session->listed.days(m_calendar, TRY(m_store.database().dataVersion()));
        std::vector<ListedDay> listed;
        for (const auto& day : days) {
            auto place = known.find(day);
            if (place == known.end())
                place = known.emplace(day, TRY(summarize(day, exclusion, exportedRevisions))).first;
            listed.push_back(place->second);
        }
        return listed;
    });
}

/// Reads the day, computes an edit and writes it, alone in writing; then answers.
template <typename Compute, typename Answer>
auto DayBook::edit(EditKind kind, const LocalDay& day, std::span<const UUID> ids, Compute compute,
                   Answer answer)
{
    using Result = decltype(answer(std::declval<std::vector<ReviewSubject>&>(),
                                   std::declval<ReviewedLayerMutation&>(), std::declval<const ReviewDay&>()));
    std::optional<DayEdit> done;
    Written written;
    auto result = m_store.database().write([&](StoreConnection&) -> Result {
        const auto before = TRY(load(day));
        const auto selected = TRY(selectedWork(before->content, ids));
        const auto mutation =
            TRY(compute(selected, EditContext{before->content, before->directory, calendarOf(day)}));
        if (m_session != nullptr)
            done = DayEdit{.kind = kind, .day = day, .before = {}, .after = {}};
        if (done)
            done->before = TRY(layer(day, mutation.reviewUpserts));
        written = TRY(apply(mutation, *before));
        if (done)
            done->after = TRY(layer(day, mutation.reviewUpserts));
        return answer(selected, mutation, written.day->content);
    });
    if (result && m_session != nullptr) {
        remember(std::move(written));
        m_session->history.add(*std::move(done));
    }
    return result;
}

Stored<DayBook::Written> DayBook::apply(const ReviewedLayerMutation& mutation, const LoadedDay& before)
{
    TRY(m_store.review().apply(mutation));
    return Written{TRY(loadDayAgain(m_store, before, calendarOf(before.content.day), mutation)),
                   TRY(m_store.database().dataVersion())};
}

void DayBook::remember(Written written)
{
    const auto calendar = calendarOf(written.day->content.day);
    m_session->seen.keep(std::move(written.day), calendar, written.dataVersion);
}

template <typename Compute>
DayEdited<EditedWork> DayBook::editInPlace(EditKind kind, const LocalDay& day, std::span<const UUID> ids,
                                           Compute compute)
{
    return edit(kind, day, ids, compute,
                [](const std::vector<ReviewSubject>& selected, const ReviewedLayerMutation& mutation,
                   const ReviewDay& after) -> DayEdited<EditedWork> {
                    return workAfterwards(after, selected, mutation);
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
    const auto* next = m_session == nullptr ? nullptr : m_session->history.next(direction);
    if (next == nullptr)
        return std::unexpected(isUndo ? EditHistoryProblem::nothingToUndo
                                      : EditHistoryProblem::nothingToRedo);

    auto edit = *next;
    const auto& from = isUndo ? edit.after : edit.before;
    const auto& to = isUndo ? edit.before : edit.after;
    Written written;
    auto result = m_store.database().write([&](StoreConnection&) -> DayEdited<void> {
        if (TRY(layer(edit.day, from.reviews)) != from)
            return std::unexpected(EditHistoryProblem::dayChangedSince);
        written = TRY(apply(difference(from, to), *TRY(load(edit.day))));
        return {};
    });
    if (result) {
        remember(std::move(written));
        m_session->history.move(direction);
        return edit;
    }
    if (std::holds_alternative<EditHistoryProblem>(result.error()))
        m_session->history.drop(direction);
    return std::unexpected(std::move(result).error());
}

} // namespace stintbook
