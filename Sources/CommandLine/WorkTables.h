#pragma once

#include <vector>

#include "App/DayBook.h"
#include "CommandLine/Session.h"

/// Days and work as people read them in a terminal.
namespace stintbook {

void printDay(Session& session, const CalendarContext& calendar, const OpenedDay& day);
void printDays(Session& session, const std::vector<ListedDay>& days);
void printSegments(Session& session, const CalendarContext& calendar,
                   const std::vector<ActivitySegment>& segments);
/// Blocks and items together, by start.
void printWork(Session& session, const CalendarContext& calendar, const std::vector<WorkBlock>& blocks,
               const std::vector<ReviewedWorkItem>& items,
               const std::set<ReviewedItemID>& itemsWithoutDetails = {});

} // namespace stintbook
