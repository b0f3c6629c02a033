#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "Base/Instant.h"
#include "Domain/ApplicationIdentity.h"

namespace stintbook {

struct FrontmostApplicationSnapshot {
    ApplicationIdentity identity;
    /// 0 where the window system does not tell.
    std::int32_t processIdentifier = 0;
    Instant observedAt;

    friend bool operator==(const FrontmostApplicationSnapshot&,
                           const FrontmostApplicationSnapshot&) = default;
};

/// The window in front, as the window system knows it.
struct FrontmostWindow {
    FrontmostApplicationSnapshot application;
    /// The window's title; empty where the window system tells none.
    std::string title;

    friend bool operator==(const FrontmostWindow&, const FrontmostWindow&) = default;
};

/// Reports the frontmost application. An application that is never recorded produces no report.
class FrontmostApplicationProviding {
public:
    using Follower = std::function<void(const FrontmostWindow&)>;

    virtual ~FrontmostApplicationProviding() = default;

    /// The window in front now; absent when none is, or when it is never recorded.
    virtual std::optional<FrontmostWindow> current() = 0;
    /// From now on reports every switch and every change of the front window's title, once settled, on
    /// capture's thread; the first report is the present state.
    virtual void follow(Follower follower) = 0;
    virtual void stop() = 0;
    /// Which of the desktop's services is in use, for `status`: "x11", "wlroots", ….
    virtual std::string name() const = 0;
};

} // namespace stintbook
