#pragma once

#include <span>
#include <string>
#include <vector>

#include "Review/WorkBlock.h"

namespace stintbook {

/// A title under which work was done, and for how long.
struct WorkTitle {
    std::string text;
    Seconds duration;

    friend bool operator==(const WorkTitle&, const WorkTitle&) = default;
};

/// The titles of the segments, each once: by duration, the longest first; of equals, the one that was seen first.
std::vector<WorkTitle> workTitles(std::span<const WorkBlockSegment> segments);

} // namespace stintbook
