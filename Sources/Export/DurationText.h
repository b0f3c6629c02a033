#pragma once

#include <string>

#include "Base/Decimal.h"

namespace stintbook {

/// A billed or tracked duration as people read it: "7 h 30 min", "45 s", "0 min"; the parts that are zero
/// are left out. Rounded to whole seconds; not negative.
std::string durationText(const Decimal& seconds);

} // namespace stintbook
