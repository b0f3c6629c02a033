#pragma once

#include <functional>

#include "App/Ports/RunningInstance.h"
#include "Base/Executor.h"
#include "Base/TimeSource.h"
#include "Capture/DesktopProviders.h"

namespace stintbook {

/// The desktop that is observed, and the thread that observes it.
///
/// What is not said to be for its owner is for that thread, which alone waits for the desktop's answers.
class ObservedDesktop {
public:
    virtual ~ObservedDesktop() = default;

    /// False where no window system tells what is in front: then nothing can be recorded.
    virtual bool canSeeApplications() = 0;
    virtual DesktopProviders providers() = 0;
    virtual Timers& timers() = 0;
    /// Where other processes meet this copy.
    virtual InstancePublishing& publishing() = 0;
    /// Work that the machine's sleep waits for, for a few seconds. Before anything is observed.
    virtual void setBeforeSleep(std::function<void(std::function<void()> done)> work) = 0;

    /// That thread's; for everybody.
    virtual Executor& executor() = 0;
    /// For its owner: from now on what is posted runs.
    virtual void begin() = 0;
    /// For its owner: waits for what is running; what was posted and has not run never will.
    virtual void end() = 0;
};

} // namespace stintbook
