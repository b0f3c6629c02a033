#pragma once

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <xcb/xcb.h>

#include "Base/Instant.h"
#include "Platform/EventLoop.h"

namespace stintbook {

/// What xcb hands out by malloc.
template <typename T> struct FreedByXcb {
    void operator()(T* pointer) const { std::free(pointer); } // NOLINT(cppcoreguidelines-no-malloc)
};
template <typename T> using XcbOwned = std::unique_ptr<T, FreedByXcb<T>>;

/// One connection to the X server of $DISPLAY and its first screen's root window.
class X11Connection {
public:
    using EventHandler = std::function<void(const xcb_generic_event_t&)>;

    /// Null where no server answers.
    static std::unique_ptr<X11Connection> open();

    /// Hands every event to `onEvent` on the loop's thread; `onLoss` is called once when the server goes.
    /// Either may destroy this connection.
    void attach(EventLoop& loop, EventHandler onEvent, std::function<void()> onLoss);
    /// Handles what a reply that was waited for brought along. To be called after such waits.
    void handleQueuedEvents();

    xcb_connection_t* get() const { return m_connection.get(); }
    xcb_window_t root() const { return m_root; }
    bool isBroken() const { return xcb_connection_has_error(m_connection.get()) != 0; }

    xcb_atom_t atom(const char* name);

    struct Property {
        xcb_atom_t type = XCB_ATOM_NONE;
        int format = 0;
        std::string bytes;

        /// The first 32-bit value.
        std::optional<std::uint32_t> number() const;
    };
    using PropertyCookie = xcb_get_property_cookie_t;
    /// Asks for at most 4 KiB; several may be asked for before the first answer is awaited.
    PropertyCookie ask(xcb_window_t window, xcb_atom_t property);
    /// Absent when the window or the property does not exist.
    std::optional<Property> answer(PropertyCookie cookie);

private:
    explicit X11Connection(xcb_connection_t* connection, xcb_window_t root)
        : m_connection(connection)
        , m_root(root)
    {
    }

    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    xcb_window_t m_root;
    EventHandler m_onEvent;
    std::function<void()> m_onLoss;
    std::unique_ptr<EventLoop::Watch> m_watch;
    std::shared_ptr<bool> m_life = std::make_shared<bool>(true);
};

} // namespace stintbook
