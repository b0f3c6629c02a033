#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Platform/EventLoop.h"

// NOLINTBEGIN(readability-identifier-naming)
struct wl_display;
struct wl_interface;
struct wl_registry;
// NOLINTEND(readability-identifier-naming)

namespace stintbook {

/// One connection to the compositor of $WAYLAND_DISPLAY and the globals that it offers.
class WaylandConnection {
public:
    /// Null where no compositor answers.
    static std::unique_ptr<WaylandConnection> open();
    ~WaylandConnection();
    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;

    /// Dispatches what arrives on the loop's thread; `onLoss` is called once when the compositor goes, and
    /// may destroy this connection.
    void attach(EventLoop& loop, std::function<void()> onLoss);
    /// Waits until the compositor has answered all that was asked so far.
    void synchronize();
    void flush();

    bool offers(const wl_interface& interface) const { return find(interface) != nullptr; }
    /// The first global of that interface, as the highest version that both sides know up to `version`; null
    /// when none is offered.
    template <typename Proxy> Proxy* bind(const wl_interface& interface, std::uint32_t version)
    {
        return static_cast<Proxy*>(bindAny(interface, version));
    }

private:
    struct Global {
        std::uint32_t name;
        std::string interface;
        std::uint32_t version;
    };

    explicit WaylandConnection(wl_display* display);
    const Global* find(const wl_interface& interface) const;
    void* bindAny(const wl_interface& interface, std::uint32_t version);
    void receive();

    wl_display* m_display;
    wl_registry* m_registry = nullptr;
    std::vector<Global> m_globals;
    std::function<void()> m_onLoss;
    std::unique_ptr<EventLoop::Watch> m_watch;
};

} // namespace stintbook
