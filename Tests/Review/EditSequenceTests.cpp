#include <array>
#include <functional>
#include <map>
#include <ranges>

#include <gmock/gmock.h>

#include "Review/Assignment.h"
#include "Review/Disposition.h"
#include "Review/Freeze.h"
#include "Review/Merge.h"
#include "Review/MissingWork.h"
#include "Review/ReadyToBill.h"
#include "Review/Split.h"
#include "Review/WorkBlockBuilder.h"
#include "Support/RandomWork.h"

namespace stintbook {
namespace {

/// A random day as its user edits it: every mutation is kept and the day is opened anew.
class EditedDay {
public:
    static constexpr std::size_t kindsOfEdits = 8;

    explicit EditedDay(unsigned seed)
        : m_random(seed)
    {
        for (auto at = m_bounds.start + Seconds{8 * 3600.0}; at < m_bounds.start + Seconds{12 * 3600.0};) {
            auto segment = m_random.segment(at, Seconds{30.0 + static_cast<double>(m_random.below(1800))});
            if (m_random.oneIn(6))
                segment.kind = m_random.oneIn(2) ? ActivityKind::idle : ActivityKind::gap;
            at = segment.end + Seconds{m_random.oneIn(8) ? 60.0 : 0.0};
            m_segments.push_back(std::move(segment));
        }
    }

    ReviewDay open() const
    {
        ReviewDay content{.day = m_day, .bounds = m_bounds};
        std::ranges::copy(m_items | std::views::values, std::back_inserter(content.items));
        content.freeSegments = freeSegments(m_segments, m_bounds, content.items);
        content.blocks = m_builder.blocks(content.freeSegments, m_reviews);
        return content;
    }

    /// Whether the edit was accepted. The edit sees the day as it stands.
    bool edit(const std::function<Edited<ReviewedLayerMutation>(const EditContext&)>& edit)
    {
        const auto content = open();
        const auto mutation = edit(contextOf(content));
        if (!mutation)
            return false;
        for (const auto id : mutation->deletions)
            m_items.erase(id);
        for (const auto& item : mutation->upserts) {
            EXPECT_EQ(problem(item), std::nullopt) << "the edit broke an invariant";
            m_items.insert_or_assign(item.id, item);
        }
        for (const auto& [segment, review] : mutation->reviewUpserts)
            m_reviews.insert_or_assign(segment, review);
        return true;
    }

    EditContext contextOf(const ReviewDay& content)
    {
        return {.day = content,
                .directory = m_random.directory(),
                .calendar = m_calendar,
                .freshIdentifier = [this] { return m_random.uuid(); }};
    }

    std::vector<ReviewSubject> anySubjects(const ReviewDay& content, std::size_t count)
    {
        std::vector<ReviewSubject> all(content.blocks.begin(), content.blocks.end());
        all.insert(all.end(), content.items.begin(), content.items.end());
        std::ranges::stable_sort(all, {}, [](const auto& subject) { return interval(subject).start; });
        const auto first = m_random.below(all.size());
        return {all.begin() + static_cast<long>(first),
                all.begin() + static_cast<long>(std::min(first + count, all.size()))};
    }

    Edited<ReviewedLayerMutation> anyEdit(std::size_t kind, const EditContext& context)
    {
        const auto selection = anySubjects(context.day, 1 + m_random.below(3));
        const auto& project = m_random.directory().projects()[m_random.below(6)];
        const AttributionAssignment target{project.clientID, project.id, m_random.oneIn(2)};
        const auto time = interval(selection.front());
        const auto inside = time.start + time.length() * (static_cast<double>(m_random.below(5)) / 4);
        switch (kind) {
        case 0:
            return freeze(selection, context);
        case 1:
            return split(selection.front(), inside, context);
        case 2:
            return merge(selection, context);
        case 3:
            return ignore(selection, context);
        case 4:
            return restore(selection);
        case 5:
            return assign(selection, target, context);
        case 6:
            return describe(selection.front(), m_random.oneIn(2) ? "Work" : "", context);
        default:
            return addMissingWork({.start = time.end,
                                   .end = time.end + Seconds{90},
                                   .clientID = target.clientID,
                                   .projectID = target.projectID},
                                  context);
        }
    }

    const std::vector<ActivitySegment>& segments() const { return m_segments; }
    RandomWork& random() { return m_random; }

private:
    RandomWork m_random;
    CalendarContext m_calendar = *CalendarContext::inZone("Europe/Berlin");
    LocalDay m_day = *m_calendar.dayOn({2026, 11, 20});
    Interval m_bounds = m_calendar.boundsOf(m_day);
    std::vector<ActivitySegment> m_segments;
    WorkBlockBuilder m_builder{m_calendar, AttributionEngine(m_random.rules(12), m_random.directory()),
                               ExclusionEngine({})};
    std::map<ReviewedItemID, ReviewedWorkItem> m_items;
    SegmentReviews m_reviews;
};

/// Every recorded second of work lies in exactly one block or one slice.
void expectAllWorkAccountedForOnce(const EditedDay& day)
{
    const auto content = day.open();
    std::vector<Interval> covered;
    for (const auto& block : content.blocks)
        covered.push_back(block.interval());
    for (const auto& item : content.items) {
        for (const auto& slice : item.slices)
            covered.push_back(slice.interval());
    }
    std::vector<Interval> recorded;
    for (const auto& segment : day.segments()) {
        if (segment.kind == ActivityKind::work)
            recorded.push_back(segment.interval());
    }
    const auto joined = [](std::vector<Interval> times) {
        std::ranges::sort(times, {}, &Interval::start);
        std::vector<Interval> result;
        for (const auto& time : times) {
            if (!result.empty() && result.back().end == time.start)
                result.back().end = time.end;
            else
                result.push_back(time);
        }
        return result;
    };
    EXPECT_EQ(joined(covered), joined(recorded));
}

TEST(EditSequences, KeepEveryRecordedSecondInOnePlace)
{
    std::array<int, EditedDay::kindsOfEdits> accepted{};
    for (unsigned seed = 1; seed <= 20; ++seed) {
        EditedDay day(seed);
        for (int step = 0; step < 60 && !testing::Test::HasFailure(); ++step) {
            const auto kind = day.random().below(accepted.size());
            const auto edit = [&](const EditContext& context) { return day.anyEdit(kind, context); };
            accepted.at(kind) += day.edit(edit) ? 1 : 0;
            expectAllWorkAccountedForOnce(day);
        }
    }
    EXPECT_THAT(accepted, testing::Each(testing::Gt(0))) << "every kind of edit should have been possible";
}

/// The layer without what a split and a merge leave behind: new identifiers and cut slices.
std::string contentApartFromCuts(const ReviewDay& content)
{
    auto items = content.items;
    for (auto& item : items) {
        item.id = {};
        std::vector<ReviewedSourceSlice> whole;
        for (const auto& slice : item.slices) {
            if (!whole.empty() && whole.back().segmentID == slice.segmentID)
                whole.back().end = slice.end;
            else
                whole.push_back(slice);
        }
        item.slices = whole;
    }
    return canonicalText(items);
}

TEST(EditSequences, LeaveNoTraceWhenTheyAreUndone)
{
    EditedDay day(7);
    const auto& project = day.random().directory().projects().front();
    const AttributionAssignment target{project.clientID, project.id, true};
    const AttributionAssignment other{project.clientID, project.id, false};
    const auto everyBlock = [](const EditContext& context) {
        return std::vector<ReviewSubject>(context.day.blocks.begin(), context.day.blocks.end());
    };
    ASSERT_TRUE(day.edit([&](const auto& context) { return assign(everyBlock(context), target, context); }));
    ASSERT_TRUE(day.edit([&](const auto& context) { return freeze(everyBlock(context), context); }));

    const auto items = day.open().items;
    ASSERT_GT(items.size(), 5);
    for (const auto& item : items) {
        const auto before = day.open();
        // The item as it is now; after a split its two parts.
        const auto now = [&](const EditContext& context) {
            std::vector<ReviewSubject> parts;
            for (const auto& candidate : context.day.items) {
                if (candidate.interval().overlaps(item.interval()))
                    parts.emplace_back(candidate);
            }
            return parts;
        };
        const auto edit = [&](auto&& change) {
            ASSERT_TRUE(day.edit([&](const EditContext& context) -> Edited<ReviewedLayerMutation> {
                return change(now(context), context);
            }));
        };
        const auto expectUnchanged = [&] { EXPECT_EQ(revision(day.open().items), revision(before.items)); };

        edit([](const auto& work, const auto& context) { return ignore(work, context); });
        EXPECT_NE(revision(day.open().items), revision(before.items));
        edit([](const auto& work, const auto&) { return restore(work); });
        expectUnchanged();
        edit([&](const auto& work, const auto& context) { return assign(work, other, context); });
        edit([&](const auto& work, const auto& context) { return assign(work, target, context); });
        expectUnchanged();
        edit([](const auto& work, const auto& context) { return describe(work[0], "Work", context); });
        EXPECT_NE(revision(day.open().items), revision(before.items));
        edit([](const auto& work, const auto& context) { return describe(work[0], "", context); });
        expectUnchanged();
        const auto inside = item.start + item.interval().length() * 0.3;
        edit([&](const auto& work, const auto& context) { return split(work[0], inside, context); });
        EXPECT_EQ(day.open().items.size(), items.size() + 1);
        edit([](const auto& work, const auto& context) { return merge(work, context); });
        EXPECT_EQ(contentApartFromCuts(day.open()), contentApartFromCuts(before));
    }
}

} // namespace
} // namespace stintbook
