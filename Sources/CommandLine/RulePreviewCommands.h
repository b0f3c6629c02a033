#pragma once

#include "CommandLine/CommandTree.h"

namespace stintbook {

/// The verbs of `rule` that show what rules do, and change nothing.
void addRulePreviewVerbs(Noun& noun);

} // namespace stintbook
