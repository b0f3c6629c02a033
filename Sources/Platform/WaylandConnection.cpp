#include "Platform/WaylandConnection.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <utility>

#include <wayland-client.h>

namespace stintbook {

std::unique_ptr<WaylandConnection> WaylandConnection::open()
{
    const char* name = std::getenv("WAYLAND_DISPLAY");
    if (!name || !*name)
        return nullptr;
    auto* display = wl_display_connect(nullptr);
    if (!display)
        return nullptr;
    std::unique_ptr<WaylandConnection> connection(new WaylandConnection(display));
    return wl_display_get_error(display) ? nullptr : std::move(connection);
}

WaylandConnection::WaylandConnection(wl_display* display)
    : m_display(display)
    , m_registry(wl_display_get_registry(display))
{
    static constexpr wl_registry_listener listener{
        .global =
            [](void* self, wl_registry*, std::uint32_t name, const char* interface, std::uint32_t version) {
                static_cast<WaylandConnection*>(self)->m_globals.push_back({name, interface, version});
            },
        .global_remove =
            [](void* self, wl_registry*, std::uint32_t name) {
                std::erase_if(static_cast<WaylandConnection*>(self)->m_globals,
                              [&](const Global& global) { return global.name == name; });
            }};
    wl_registry_add_listener(m_registry, &listener, this);
    wl_display_roundtrip(m_display);
}

WaylandConnection::~WaylandConnection()
{
    m_watch.reset();
    wl_registry_destroy(m_registry);
    wl_display_disconnect(m_display);
}

void WaylandConnection::attach(EventLoop& loop, std::function<void()> onLoss)
{
    m_onLoss = std::move(onLoss);
    m_watch = loop.watch(wl_display_get_fd(m_display), EventLoop::Readiness::readable, [this] { receive(); });
    flush();
}

void WaylandConnection::receive()
{
    while (wl_display_prepare_read(m_display) != 0)
        wl_display_dispatch_pending(m_display);
    int status = wl_display_read_events(m_display);
    if (status >= 0 || errno == EAGAIN)
        status = wl_display_dispatch_pending(m_display);
    flush();
    if (status >= 0 && wl_display_get_error(m_display) == 0)
        return;
    m_watch.reset();
    if (auto onLoss = std::exchange(m_onLoss, {}))
        onLoss();
}

void WaylandConnection::synchronize()
{
    wl_display_roundtrip(m_display);
}

void WaylandConnection::flush()
{
    wl_display_flush(m_display);
}

const WaylandConnection::Global* WaylandConnection::find(const wl_interface& interface) const
{
    auto found = std::ranges::find(m_globals, interface.name, &Global::interface);
    return found == m_globals.end() ? nullptr : &*found;
}

void* WaylandConnection::bindAny(const wl_interface& interface, std::uint32_t version)
{
    const auto* global = find(interface);
    if (!global)
        return nullptr;
    return wl_registry_bind(m_registry, global->name, &interface, std::min(global->version, version));
}

} // namespace stintbook
