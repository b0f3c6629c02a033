#pragma once

#include <string>
#include <vector>

#include "App/OpenedStore.h"

namespace stintbook {

/// So far back it is looked for what work was described as.
inline constexpr Seconds reachOfDescriptions{180 * 86'400.0};

/// What reviewed work was described as lately, for the user to choose again: each text once, the latest first.
Stored<std::vector<std::string>> earlierDescriptions(OpenedStore& store, Instant now);

} // namespace stintbook
