#pragma once

#include "Base/Instant.h"

namespace stintbook {

/// How often, and how far apart, the last saves are tried when capture ends.
struct ShutdownRetryPolicy {
    int attempts = 3;
    Seconds delay{0.25};
};

enum class SavePolicy {
    /// What is pending is offered to the store after every input.
    afterEveryInput,
    /// Only on `savePending`, for a deletion and at the end: a replay gathers larger transactions.
    whenAsked,
};

struct CaptureConfiguration {
    /// So long without input means idle.
    Seconds idleThreshold{300};
    Seconds idlePollInterval{15};
    /// A wall clock that runs ahead of the awake one by more than this was asleep.
    Seconds sleepDetectionThreshold{60};
    ShutdownRetryPolicy shutdownRetryPolicy;
    Seconds browserObservationInterval{3};
    /// At most one change of title in so long is observed; the last one always is.
    Seconds titleChangeInterval{1};
    SavePolicy savePolicy = SavePolicy::afterEveryInput;
};

} // namespace stintbook
