#pragma once

#include <list>
#include <memory>
#include <optional>
#include <string>

#include "Platform/FrontmostReporter.h"
#include "Platform/Reconnection.h"
#include "Platform/WaylandConnection.h"

// NOLINTBEGIN(readability-identifier-naming)
struct wl_array;
struct zwlr_foreign_toplevel_handle_v1;
struct zwlr_foreign_toplevel_manager_v1;
// NOLINTEND(readability-identifier-naming)

namespace stintbook {

/// The frontmost application of a Wayland desktop whose compositor lists its windows: sway, Hyprland, labwc,
/// wayfire, niri. A window's process stays unknown.
class WlrFrontmostApplication final : public FrontmostApplicationProviding {
public:
    static bool isOfferedBy(const WaylandConnection& connection);

    WlrFrontmostApplication(EventLoop& loop, const TimeSource& timeSource, ApplicationIdentities& identities);
    ~WlrFrontmostApplication() override;
    WlrFrontmostApplication(const WlrFrontmostApplication&) = delete;
    WlrFrontmostApplication& operator=(const WlrFrontmostApplication&) = delete;

    std::optional<FrontmostWindow> current() override { return m_reporter.current(); }
    void follow(Follower follower) override;
    void stop() override;
    std::string name() const override { return "wlroots"; }

private:
    struct State {
        std::string title;
        std::string applicationID;
        bool isActivated = false;
    };
    struct Toplevel {
        WlrFrontmostApplication* owner;
        zwlr_foreign_toplevel_handle_v1* handle;
        std::uint64_t number;
        /// What was announced with the last "done", and what comes into force with the next.
        State state;
        State next;
    };

    bool connect();
    void disconnect();
    void add(zwlr_foreign_toplevel_handle_v1* handle);
    void remove(Toplevel& toplevel);
    void apply(Toplevel& toplevel);
    std::optional<SeenWindow> read() const;

    EventLoop& m_loop;
    std::unique_ptr<WaylandConnection> m_connection;
    zwlr_foreign_toplevel_manager_v1* m_manager = nullptr;
    std::uint64_t m_lastNumber = 0;
    /// The one that was activated last stands in front. Addresses are the listeners' data.
    std::list<Toplevel> m_toplevels;
    FrontmostReporter m_reporter;
    Reconnection m_reconnection;
};

} // namespace stintbook
