#pragma once

#include <functional>

#include "App/Ports/RunningInstance.h"
#include "Base/Executor.h"
#include "Base/TimeSource.h"
#include "Capture/DesktopProviders.h"

namespace stintbook {

/// The desktop that is observed, and the thread that observes it.
///
/// Before `begin` and after `end` nothing runs on that thread, and its owner's may use everything here.
class ObservedDesktop {
public:
    virtual ~ObservedDesktop() = default;

    /// False where no window system tells what is in front: then nothing can be recorded.
    virtual bool canSeeApplications() const = 0;
    virtual DesktopProviders providers() = 0;
    /// Capture's.
    virtual Executor& executor() = 0;
    /// On capture's thread.
    virtual Timers& timers() = 0;
    /// Where other processes meet this copy; on capture's thread.
    virtual InstancePublishing& publishing() = 0;
    /// Work that the machine's sleep waits for, for a few seconds. Before `begin`.
    virtual void setBeforeSleep(std::function<void(std::function<void()> done)> work) = 0;

    /// From now on what is posted runs.
    virtual void begin() = 0;
    /// Waits for what is running; what was posted and has not run never will.
    virtual void end() = 0;
};

} // namespace stintbook
