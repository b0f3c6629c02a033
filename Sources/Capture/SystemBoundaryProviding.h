#pragma once

#include <array>
#include <functional>
#include <string_view>
#include <variant>

#include "Base/Instant.h"
#include "Base/RawValue.h"
#include "Domain/ActivitySegment.h"

namespace stintbook {

enum class SystemResumeCause { systemWake, sessionActive };

template <> struct RawValues<SystemResumeCause> {
    static constexpr std::array table{
        std::pair{SystemResumeCause::systemWake, std::string_view("systemWake")},
        std::pair{SystemResumeCause::sessionActive, std::string_view("sessionActive")},
    };
};

/// The machine goes to sleep (`systemSleep`) or the session becomes inactive (`sessionInactive`).
struct ActivitySuspended {
    GapReason reason;
    Instant at;

    friend bool operator==(const ActivitySuspended&, const ActivitySuspended&) = default;
};

struct ActivityResumed {
    SystemResumeCause cause;
    Instant at;

    friend bool operator==(const ActivityResumed&, const ActivityResumed&) = default;
};

using SystemBoundary = std::variant<ActivitySuspended, ActivityResumed>;

/// Reports when the machine or the login session stops and resumes, on capture's thread.
class SystemBoundaryProviding {
public:
    using Follower = std::function<void(const SystemBoundary&)>;

    virtual ~SystemBoundaryProviding() = default;
    virtual void follow(Follower follower) = 0;
    virtual void stop() = 0;
    virtual std::string name() const = 0;
};

} // namespace stintbook
