#include "Platform/X11Connection.h"

#include <cstring>
#include <utility>

namespace stintbook {

std::unique_ptr<X11Connection> X11Connection::open()
{
    int screenNumber = 0;
    auto* connection = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(connection)) {
        xcb_disconnect(connection);
        return nullptr;
    }
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < screenNumber && screens.rem > 1; ++i)
        xcb_screen_next(&screens);
    return std::unique_ptr<X11Connection>(new X11Connection(connection, screens.data->root));
}

void X11Connection::attach(EventLoop& loop, EventHandler onEvent, std::function<void()> onLoss)
{
    m_onEvent = std::move(onEvent);
    m_onLoss = std::move(onLoss);
    m_watch = loop.watch(xcb_get_file_descriptor(get()), EventLoop::Readiness::readable,
                         [this] { handleQueuedEvents(); });
    // What came before the watch began will not wake it.
    loop.post([this, life = std::weak_ptr(m_life)] {
        if (!life.expired())
            handleQueuedEvents();
    });
}

void X11Connection::handleQueuedEvents()
{
    std::weak_ptr<bool> life = m_life;
    while (XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(get())}) {
        // Errors arrive here too, those of requests without an answer: a window that is gone.
        if (event->response_type != 0 && m_onEvent)
            m_onEvent(*event);
        if (life.expired())
            return;
    }
    if (!isBroken())
        return;
    m_watch.reset();
    if (auto onLoss = std::exchange(m_onLoss, {}))
        onLoss();
}

xcb_atom_t X11Connection::atom(const char* name)
{
    auto cookie = xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    XcbOwned<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(get(), cookie, nullptr)};
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

X11Connection::PropertyCookie X11Connection::ask(xcb_window_t window, xcb_atom_t property)
{
    constexpr std::uint32_t longest = 4096 / 4;
    return xcb_get_property(get(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, longest);
}

std::optional<X11Connection::Property> X11Connection::answer(PropertyCookie cookie)
{
    xcb_generic_error_t* refusal = nullptr;
    XcbOwned<xcb_get_property_reply_t> reply{xcb_get_property_reply(get(), cookie, &refusal)};
    XcbOwned<xcb_generic_error_t> error{refusal};
    if (!reply || reply->type == XCB_ATOM_NONE)
        return std::nullopt;
    const auto* bytes = static_cast<const char*>(xcb_get_property_value(reply.get()));
    auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
    return Property{reply->type, reply->format, std::string(bytes, length)};
}

std::optional<std::uint32_t> X11Connection::Property::number() const
{
    std::uint32_t value = 0;
    if (format != 32 || bytes.size() < sizeof value)
        return std::nullopt;
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
}

} // namespace stintbook
