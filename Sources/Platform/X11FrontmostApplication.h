#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Platform/FrontmostReporter.h"
#include "Platform/Reconnection.h"
#include "Platform/X11Connection.h"

namespace stintbook {

/// The frontmost application of an X11 desktop whose window manager keeps `_NET_ACTIVE_WINDOW`.
///
/// When the server goes away the last report stands; connecting is tried again, ever more seldom.
class X11FrontmostApplication final : public FrontmostApplicationProviding {
public:
    X11FrontmostApplication(EventLoop& loop, const TimeSource& timeSource, ApplicationIdentities& identities);

    std::optional<FrontmostWindow> current() override { return m_reporter.current(); }
    void follow(Follower follower) override;
    void stop() override;
    std::string name() const override { return "x11"; }

private:
    /// The atoms of one connection.
    struct Atoms {
        explicit Atoms(X11Connection& connection);
        xcb_atom_t activeWindow;
        xcb_atom_t netName;
        xcb_atom_t processIdentifier;
        xcb_atom_t gtkApplicationID;
        xcb_atom_t utf8;
    };

    bool connect();
    void handle(const xcb_generic_event_t& event);
    std::optional<SeenWindow> read();
    std::string text(const X11Connection::Property& property) const;
    void watchWindow(xcb_window_t window);

    EventLoop& m_loop;
    std::unique_ptr<X11Connection> m_connection;
    std::optional<Atoms> m_atoms;
    xcb_window_t m_watchedWindow = XCB_WINDOW_NONE;
    bool m_isFollowed = false;
    FrontmostReporter m_reporter;
    Reconnection m_reconnection;
    /// A job that was posted must not meet a provider that is gone.
    std::shared_ptr<bool> m_life = std::make_shared<bool>(true);
};

} // namespace stintbook
