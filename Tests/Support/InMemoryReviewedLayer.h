#pragma once

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

#include "Review/ReviewedRecordRepository.h"

namespace stintbook {

/// The reviewed layer and the segments' reviews, kept in memory and checked as the store checks them.
class InMemoryReviewedLayer : public ReviewedRecordRepository, public SegmentReviewRepository {
public:
    Stored<std::vector<ReviewedWorkItem>> items(const LocalDay& day) const override
    {
        return those([&](const ReviewedWorkItem& item) { return item.day == day; });
    }
    Stored<std::vector<ReviewedWorkItem>> items(Interval overlapping) const override
    {
        return those([&](const ReviewedWorkItem& item) { return item.interval().overlaps(overlapping); });
    }
    Stored<std::optional<ReviewedDayApproval>> approval(const LocalDay& day) const override
    {
        const auto found = m_approvals.find(day);
        return found == m_approvals.end() ? std::nullopt : std::optional(found->second);
    }
    Stored<std::vector<LocalDay>> reviewedDays(std::optional<Interval> startingIn) const override
    {
        std::set<LocalDay> days;
        for (const auto& [id, item] : m_items)
            days.insert(item.day);
        for (const auto& [day, approval] : m_approvals)
            days.insert(day);
        std::erase_if(days,
                      [&](const LocalDay& day) { return startingIn && !startingIn->contains(day.start); });
        return std::vector(days.begin(), days.end());
    }
    Stored<void> apply(const ReviewedLayerMutation& mutation) override
    {
        for (const auto& item : mutation.upserts) {
            if (const auto broken = problem(item))
                return std::unexpected(StoreFailure{std::string(rawValue(*broken))});
        }
        for (const auto id : mutation.deletions)
            m_items.erase(id);
        for (const auto& item : mutation.upserts)
            m_items.insert_or_assign(item.id, item);
        if (mutation.approval)
            m_approvals.insert_or_assign(mutation.approval->day, *mutation.approval);
        return saveReviews(mutation.reviewUpserts);
    }

    Stored<SegmentReviews> reviews(std::span<const SegmentID> segments) const override
    {
        SegmentReviews found;
        for (const auto id : segments) {
            if (const auto review = m_reviews.find(id); review != m_reviews.end())
                found.insert(*review);
        }
        return found;
    }
    Stored<void> saveReviews(const std::map<SegmentID, SegmentReview>& reviews) override
    {
        for (const auto& [id, review] : reviews) {
            m_reviews.insert_or_assign(id, review);
            if (review == SegmentReview{})
                m_reviews.erase(id);
        }
        return {};
    }

private:
    template <typename Wanted> std::vector<ReviewedWorkItem> those(Wanted wanted) const
    {
        std::vector<ReviewedWorkItem> found;
        for (const auto& [id, item] : m_items) {
            if (wanted(item))
                found.push_back(item);
        }
        std::ranges::sort(found, {}, [](const auto& item) { return std::tuple(item.start, item.id); });
        return found;
    }

    std::map<ReviewedItemID, ReviewedWorkItem> m_items;
    std::map<LocalDay, ReviewedDayApproval> m_approvals;
    std::map<SegmentID, SegmentReview> m_reviews;
};

} // namespace stintbook
