#pragma once

#include "Domain/ActivitySegment.h"

namespace stintbook {

/// A new identifier that begins with the time of its making (version 7), so that segments recorded one after
/// another lie side by side in every index over identifiers, and reading a day costs the same after years.
SegmentID freshSegmentID();

} // namespace stintbook
