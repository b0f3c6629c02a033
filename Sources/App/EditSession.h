#pragma once

#include "App/EditHistory.h"
#include "App/ListedDay.h"
#include "App/LoadedDay.h"

namespace stintbook {

/// What somebody who looks at days and edits them has done and seen. For one thread.
struct EditSession {
    EditHistory history;
    DayMemory seen;
    ListMemory listed;
};

} // namespace stintbook
