#include "Platform/X11Idle.h"

#include <poll.h>
#include <xcb/screensaver.h>
#include <xcb/xcbext.h>

namespace stintbook {

namespace {

/// How long a sample may wait for a server that is busy; the next one comes soon.
constexpr int patienceInMilliseconds = 200;

} // namespace

X11Idle::X11Idle(const AwakeClock& awakeClock)
    : m_connection(X11Connection::open())
    , m_awakeClock(awakeClock)
{
}

std::expected<IdleState, std::string> X11Idle::sample()
{
    if (!m_connection || m_connection->isBroken())
        m_connection = X11Connection::open();
    if (!m_connection)
        return std::unexpected("The X server does not answer.");

    auto* x11 = m_connection->get();
    auto cookie = xcb_screensaver_query_info(x11, m_connection->root());
    xcb_flush(x11);
    void* reply = nullptr;
    xcb_generic_error_t* refusal = nullptr;
    while (!xcb_poll_for_reply(x11, cookie.sequence, &reply, &refusal)) {
        pollfd descriptor{.fd = xcb_get_file_descriptor(x11), .events = POLLIN, .revents = 0};
        if (poll(&descriptor, 1, patienceInMilliseconds) <= 0) {
            xcb_discard_reply(x11, cookie.sequence);
            return std::unexpected("The X server did not answer in time.");
        }
    }
    XcbOwned<xcb_generic_error_t> error{refusal};
    XcbOwned<xcb_screensaver_query_info_reply_t> info{
        static_cast<xcb_screensaver_query_info_reply_t*>(reply)};
    if (!info)
        return std::unexpected("The X server does not tell when the last input was.");
    return IdleState{.idle = {info->ms_since_user_input / 1000.0}, .awake = m_awakeClock.awake()};
}

} // namespace stintbook
