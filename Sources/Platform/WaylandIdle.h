#pragma once

#include <memory>
#include <optional>

#include "Base/TimeSource.h"
#include "Capture/IdleStateProviding.h"
#include "Platform/WaylandConnection.h"

// NOLINTBEGIN(readability-identifier-naming)
struct ext_idle_notification_v1;
struct ext_idle_notifier_v1;
struct org_kde_kwin_idle;
struct org_kde_kwin_idle_timeout;
struct wl_seat;
// NOLINTEND(readability-identifier-naming)

namespace stintbook {

/// Seconds since the last input of a Wayland desktop. The compositor tells when there was none for some
/// time, and when it came again; in between the figure is an upper bound, below that time.
class WaylandIdle final : public IdleStateProviding {
public:
    /// Null where the compositor does not tell. `resolution` is the time without input that is noticed: a
    /// poll's interval gives the instant of the return exactly.
    static std::unique_ptr<WaylandIdle> find(EventLoop& loop, const AwakeClock& awakeClock,
                                             Seconds resolution = {15});
    ~WaylandIdle() override;
    WaylandIdle(const WaylandIdle&) = delete;
    WaylandIdle& operator=(const WaylandIdle&) = delete;

    std::expected<IdleState, std::string> sample() override;
    std::string name() const override { return m_notifier ? "ext-idle-notify" : "kde-idle"; }

    /// The focus changed. A compositor whose idleness is inhibited may not tell that its user is back; so
    /// the measure begins again, and idleness shows anew when there was indeed no input.
    void noteSwitch();

private:
    WaylandIdle(std::unique_ptr<WaylandConnection> connection, const AwakeClock& awakeClock,
                Seconds resolution);
    void ask();
    void withdraw();
    void handleIdled();
    void handleResumed();

    std::unique_ptr<WaylandConnection> m_connection;
    const AwakeClock& m_awakeClock;
    Seconds m_resolution;
    /// Uptimes without sleep: the last input lay before, or not before.
    std::optional<Seconds> m_idleSince;
    Seconds m_activeSince;
    bool m_isLost = false;

    wl_seat* m_seat = nullptr;
    ext_idle_notifier_v1* m_notifier = nullptr;
    ext_idle_notification_v1* m_notification = nullptr;
    org_kde_kwin_idle* m_kdeIdle = nullptr;
    org_kde_kwin_idle_timeout* m_kdeTimeout = nullptr;
};

} // namespace stintbook
