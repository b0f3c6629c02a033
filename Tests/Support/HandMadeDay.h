#pragma once

#include <optional>
#include <string>
#include <utility>

#include "Domain/AssignmentDirectory.h"
#include "Domain/CalendarContext.h"
#include "Review/EditContext.h"
#include "Review/ReviewSubject.h"

namespace stintbook {

/// 20 November 2026 in Berlin, with blocks and items placed by hand. Identifiers count up, so that a test
/// can tell what was made first.
class HandMadeDay {
public:
    HandMadeDay()
    {
        content.day = *calendar.dayOn({2026, 11, 20});
        content.bounds = calendar.boundsOf(content.day);
    }

    Instant at(int hour, int minute = 0) const
    {
        return content.day.start + Seconds{hour * 3600.0 + minute * 60.0};
    }
    Interval hours(int from, int to) const { return {at(from), at(to)}; }

    /// A block over two recorded segments, the first of them ten minutes long.
    WorkBlock addBlock(Interval time, std::optional<AttributionAssignment> byRules, SegmentReview review = {})
    {
        WorkBlock block{.start = time.start, .end = time.end, .review = review};
        block.attribution.assignment = byRules;
        for (const auto part : {Interval{time.start, time.start + Seconds{600}},
                                Interval{time.start + Seconds{600}, time.end}}) {
            const auto free = addSegment(part, ActivityKind::work);
            block.lineage.push_back({free.segment, free.sourceSegmentID, block.attribution, review});
        }
        block.id = block.lineage.front().segment.id.uuid;
        return content.blocks.emplace_back(std::move(block));
    }

    ReviewedWorkItem addItem(Interval time, const AttributionAssignment& assignment,
                             ReviewedItemOrigin origin = ReviewedItemOrigin::observedReviewed)
    {
        ReviewedWorkItem item{.id = {next()},
                              .day = content.day,
                              .start = time.start,
                              .end = time.end,
                              .origin = origin,
                              .assignment = assignment};
        if (origin == ReviewedItemOrigin::observedReviewed)
            item.slices = {{.segmentID = {next()}, .start = time.start, .end = time.end}};
        return content.items.emplace_back(std::move(item));
    }

    FreeSegment addSegment(Interval time, ActivityKind kind)
    {
        const SegmentID id{next()};
        return content.freeSegments.emplace_back(
            ActivitySegment{.id = id, .start = time.start, .end = time.end, .kind = kind}, id);
    }

    EditContext context()
    {
        return {.day = content, .directory = directory, .calendar = calendar, .freshIdentifier = [this] {
                    return next();
                }};
    }

    UUID next() { return numbered(++m_lastNumber); }

    static UUID numbered(int number)
    {
        UUID id;
        id.bytes[14] = static_cast<std::uint8_t>(number / 256);
        id.bytes[15] = static_cast<std::uint8_t>(number % 256);
        return id;
    }

    CalendarContext calendar = *CalendarContext::inZone("Europe/Berlin");
    Client acme{.id = {numbered(1)}, .name = "Acme"};
    Client former{.id = {numbered(2)}, .name = "Former", .isArchived = true};
    Project site{.id = {numbered(3)}, .clientID = acme.id, .name = "Site"};
    Project shop{.id = {numbered(4)}, .clientID = acme.id, .name = "Shop"};
    Project archive{.id = {numbered(5)}, .clientID = former.id, .name = "Archive"};
    AttributionAssignment toSite{acme.id, site.id, true};
    AttributionAssignment toShop{acme.id, shop.id, true};
    AttributionAssignment toArchive{former.id, archive.id, true};
    AssignmentDirectory directory{{acme, former}, {site, shop, archive}};
    ReviewDay content;

private:
    int m_lastNumber = 99;
};

} // namespace stintbook
