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
    const TimeSource& clock;
    std::function<CalendarContext()> calendar;
};

} // namespace stintbook
