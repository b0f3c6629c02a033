#pragma once

#include <span>
#include <string>
#include <vector>

#include "Domain/ActivitySegment.h"

namespace stintbook {

/// The names of those applications in recorded segments that were worked in for a minute or longer and never told
/// a title, in alphabetical order. Where titles are wanted and accessibility is on, these were started before it was.
std::vector<std::string> untitledApplications(std::span<const ActivitySegment> segments);

} // namespace stintbook
