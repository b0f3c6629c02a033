#include "Platform/X11ScreenSaver.h"

#include <xcb/screensaver.h>

namespace stintbook {

std::unique_ptr<X11ScreenSaver> X11ScreenSaver::follow(EventLoop& loop, Follower follower)
{
    auto connection = X11Connection::open();
    if (!connection)
        return nullptr;
    auto* x11 = connection->get();
    auto root = connection->root();
    const auto* extension = xcb_get_extension_data(x11, &xcb_screensaver_id);
    if (!extension || !extension->present)
        return nullptr;
    std::unique_ptr<X11ScreenSaver> saver(new X11ScreenSaver(std::move(connection), std::move(follower)));
    saver->m_event = static_cast<std::uint8_t>(extension->first_event + XCB_SCREENSAVER_NOTIFY);

    xcb_screensaver_select_input(x11, root, XCB_SCREENSAVER_EVENT_NOTIFY_MASK);
    XcbOwned<xcb_screensaver_query_info_reply_t> info{
        xcb_screensaver_query_info_reply(x11, xcb_screensaver_query_info(x11, root), nullptr)};
    if (info && info->state == XCB_SCREENSAVER_STATE_ON)
        saver->m_follower(true);

    auto handle = [self = saver.get()](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7F) != self->m_event)
            return;
        const auto& change = reinterpret_cast<const xcb_screensaver_notify_event_t&>(event);
        if (change.state != XCB_SCREENSAVER_STATE_CYCLE)
            self->m_follower(change.state == XCB_SCREENSAVER_STATE_ON);
    };
    // A server that goes takes its screen along: the state stays as it was.
    saver->m_connection->attach(loop, handle, [] { });
    return saver;
}

} // namespace stintbook
