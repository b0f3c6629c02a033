#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "App/DayEditProblem.h"
#include "App/EditSession.h"
#include "App/EditedWork.h"
#include "App/ListedDay.h"
#include "App/OpenedStore.h"
#include "Billing/RecordsDayState.h"
#include "Billing/ReviewedDayReading.h"
#include "Domain/CalendarContext.h"
#include "Review/DaySummary.h"
#include "Review/ReadyToBill.h"
#include "Review/ReviewSubject.h"
#include "Review/SegmentReview.h"
#include "Rules/ExclusionEngine.h"

namespace stintbook {

/// Shown with an item whose recorded segments a cleanup has removed.
inline constexpr std::string_view detailsRemovedNote = "Activity details were removed by Keep history.";

/// One day with everything that people and exports are told about it.
struct OpenedDay {
    std::shared_ptr<const LoadedDay> loaded;
    WorkReviewSummary summary;
    std::vector<ReadyToBillBlocker> blockers;
    ReviewedDayStatus status = ReviewedDayStatus::notReady;
    ReviewedDayRevision revision;
    RecordsDayState recordsState = RecordsDayState::needsReview;
    std::vector<DayWork> work;
    std::vector<ReviewedDayLine> lines;
    ReviewedWorkTotals totals;
    /// Absent: people are shown no amounts.
    std::optional<BillingCurrency> currency;
    /// Work that is neither frozen nor ignored: on a ready day, what was recorded since.
    Seconds unreviewedDuration;
    /// The first blocker's sentence; absent for a ready day, and for one that only waits to be marked.
    std::optional<std::string> notReadyReason;

    const ReviewDay& content() const { return loaded->content; }
};

/// Opens days and edits them. Every edit reads, checks and writes in one transaction of the store.
class DayBook {
public:
    /// A session, which outlives the book, remembers its edits and what it saw; such a book is not used within a
    /// transaction that may be taken back.
    DayBook(OpenedStore& store, CalendarContext calendar, EditSession* session = nullptr);

    const CalendarContext& calendar() const { return m_calendar; }

    Stored<OpenedDay> open(const LocalDay& day) const;
    /// Days of both layers, in order: recorded ones as this calendar cuts them, reviewed ones as they were
    /// cut. Both bounds inclusive. Ten years of them take tens of milliseconds.
    Stored<std::vector<LocalDay>> days(const std::optional<LocalDay>& from,
                                       const std::optional<LocalDay>& to) const;
    /// The same with what their list tells of each.
    Stored<std::vector<ListedDay>> list(const std::optional<LocalDay>& from,
                                        const std::optional<LocalDay>& to) const;

    DayEdited<EditedWork> assign(const LocalDay& day, std::span<const UUID> ids, const WorkTarget& target);
    DayEdited<EditedWork> confirm(const LocalDay& day, std::span<const UUID> ids);
    DayEdited<EditedWork> ignore(const LocalDay& day, std::span<const UUID> ids);
    DayEdited<EditedWork> restore(const LocalDay& day, std::span<const UUID> ids);

    // These answer with the items that they wrote; a block is frozen first.
    DayEdited<std::vector<ReviewedWorkItem>> freeze(const LocalDay& day, std::span<const UUID> ids);
    DayEdited<std::vector<ReviewedWorkItem>> split(const LocalDay& day, UUID id, Instant at);
    DayEdited<std::vector<ReviewedWorkItem>> merge(const LocalDay& day, std::span<const UUID> ids);
    /// An empty text removes the description.
    DayEdited<std::vector<ReviewedWorkItem>> describe(const LocalDay& day, UUID id, const std::string& text);
    DayEdited<std::vector<ReviewedWorkItem>> add(const LocalDay& day, Interval when, const WorkTarget& target,
                                                 const std::optional<std::string>& description);
    /// The idle segment's part that lies in the day.
    DayEdited<std::vector<ReviewedWorkItem>> convertIdle(const LocalDay& day, SegmentID idle,
                                                         const WorkTarget& target,
                                                         const std::optional<std::string>& description);

    DayEdited<ReviewedDayApproval> markReady(const LocalDay& day, Instant now);

    /// The last edit that the session remembers, of whatever day; refused where its work is not as that edit left it.
    DayEdited<DayEdit> undo() { return repeat(EditHistory::Direction::undo); }
    DayEdited<DayEdit> redo() { return repeat(EditHistory::Direction::redo); }

private:
    CalendarContext calendarOf(const LocalDay& day) const;
    Stored<std::shared_ptr<const LoadedDay>> load(const LocalDay& day) const;
    /// The day once an edit is kept.
    struct Written {
        std::shared_ptr<const LoadedDay> day;
        std::int64_t dataVersion = 0;
    };
    Stored<Written> apply(const ReviewedLayerMutation& mutation, const LoadedDay& before);
    void remember(Written written);
    Stored<ListedDay> summarize(const LocalDay& day, const ExclusionEngine& exclusion,
                                const std::map<std::string, std::string>& exportedRevisions) const;
    template <typename Compute, typename Answer>
    auto edit(EditKind kind, const LocalDay& day, std::span<const UUID> ids, Compute compute, Answer answer);
    template <typename Compute>
    DayEdited<EditedWork> editInPlace(EditKind kind, const LocalDay& day, std::span<const UUID> ids,
                                      Compute compute);
    template <typename Compute>
    DayEdited<std::vector<ReviewedWorkItem>> editItems(EditKind kind, const LocalDay& day,
                                                       std::span<const UUID> ids, Compute compute);
    Stored<ReviewedLayer> layer(const LocalDay& day,
                                const std::map<SegmentID, SegmentReview>& segments) const;
    DayEdited<DayEdit> repeat(EditHistory::Direction direction);

    OpenedStore& m_store;
    CalendarContext m_calendar;
    EditSession* m_session;
};

} // namespace stintbook
