#pragma once

#include <functional>
#include <memory>

#include "Platform/X11Connection.h"

namespace stintbook {

/// Whether the X server has blanked the screen.
class X11ScreenSaver {
public:
    using Follower = std::function<void(bool isOn)>;

    /// Null where there is no X server, or one without the extension. Reports a screen that is off already.
    static std::unique_ptr<X11ScreenSaver> follow(EventLoop& loop, Follower follower);

private:
    X11ScreenSaver(std::unique_ptr<X11Connection> connection, Follower follower)
        : m_connection(std::move(connection))
        , m_follower(std::move(follower))
    {
    }

    std::unique_ptr<X11Connection> m_connection;
    Follower m_follower;
    std::uint8_t m_event = 0;
};

} // namespace stintbook
