#include "Base/TimeSource.h"

#include <ctime>

namespace stintbook {

namespace {

double secondsOf(clockid_t clock)
{
    timespec reading{};
    clock_gettime(clock, &reading);
    return static_cast<double>(reading.tv_sec) + static_cast<double>(reading.tv_nsec) * 1e-9;
}

} // namespace

Instant SystemTimeSource::now() const
{
    return {secondsOf(CLOCK_REALTIME)};
}

Seconds SystemAwakeClock::awake() const
{
    return {secondsOf(CLOCK_MONOTONIC)};
}

} // namespace stintbook
