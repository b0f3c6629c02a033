#pragma once

#include <functional>

#include "App/AppEnvironment.h"
#include "Base/TimeSource.h"
#include "Screens/Window/StoreDesk.h"

namespace stintbook {

/// What every screen's model works with. All of it outlives the models.
struct ScreenContext {
    AppEnvironment& environment;
    StoreDesk& desk;
    /// For what takes long to read: answers that are waited for come from the other desk meanwhile.
    StoreDesk& readings;
    const TimeSource& clock;
    std::function<CalendarContext()> calendar;
    /// The window's.
    Executor& main;
    /// The process's variables, which say where files lie.
    const Environment& variables;
};

} // namespace stintbook
