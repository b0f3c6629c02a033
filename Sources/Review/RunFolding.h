#pragma once

#include <vector>

#include "Review/Run.h"

namespace stintbook {

/// Lets longer neighbours absorb short runs and joins equal neighbours, pass after pass from the first run
/// to the last, until nothing changes.
std::vector<Run> folded(std::vector<Run> runs, const RunQuestions& questions);

/// Puts consecutive short runs with one review together, whatever their applications and assignments.
std::vector<Run> chained(std::vector<Run> runs, const RunQuestions& questions);

} // namespace stintbook
