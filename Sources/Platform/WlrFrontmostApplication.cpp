#include "Platform/WlrFrontmostApplication.h"

#include <algorithm>
#include <span>
#include <utility>

#include "Platform/WaylandProtocols.h"

namespace stintbook {

bool WlrFrontmostApplication::isOfferedBy(const WaylandConnection& connection)
{
    return connection.offers(zwlr_foreign_toplevel_manager_v1_interface);
}

WlrFrontmostApplication::WlrFrontmostApplication(EventLoop& loop, const TimeSource& timeSource,
                                                 ApplicationIdentities& identities)
    : m_loop(loop)
    , m_reporter(loop, timeSource, identities, [this] { return read(); })
    , m_reconnection(loop, "compositor", [this] { return connect(); })
{
    connect();
}

WlrFrontmostApplication::~WlrFrontmostApplication()
{
    disconnect();
}

void WlrFrontmostApplication::follow(Follower follower)
{
    m_reporter.follow(std::move(follower));
    if (!m_connection)
        m_reconnection.start();
}

void WlrFrontmostApplication::stop()
{
    m_reconnection.stop();
    m_reporter.stop();
}

bool WlrFrontmostApplication::connect()
{
    auto connection = WaylandConnection::open();
    if (!connection || !isOfferedBy(*connection))
        return false;
    m_connection = std::move(connection);
    m_manager =
        m_connection->bind<zwlr_foreign_toplevel_manager_v1>(zwlr_foreign_toplevel_manager_v1_interface, 3);
    static constexpr zwlr_foreign_toplevel_manager_v1_listener listener{
        .toplevel =
            [](void* self, zwlr_foreign_toplevel_manager_v1*, zwlr_foreign_toplevel_handle_v1* handle) {
                static_cast<WlrFrontmostApplication*>(self)->add(handle);
            },
        .finished = [](void*, zwlr_foreign_toplevel_manager_v1*) {}};
    zwlr_foreign_toplevel_manager_v1_add_listener(m_manager, &listener, this);
    // First the windows are announced, then their details.
    m_connection->synchronize();
    m_connection->synchronize();
    m_connection->attach(m_loop, [this] {
        disconnect();
        m_reconnection.start();
    });
    m_reporter.noteSwitch();
    return true;
}

void WlrFrontmostApplication::disconnect()
{
    for (auto& toplevel : m_toplevels)
        zwlr_foreign_toplevel_handle_v1_destroy(toplevel.handle);
    m_toplevels.clear();
    if (m_manager)
        zwlr_foreign_toplevel_manager_v1_destroy(std::exchange(m_manager, nullptr));
    m_connection.reset();
}

void WlrFrontmostApplication::add(zwlr_foreign_toplevel_handle_v1* handle)
{
    using Handle = zwlr_foreign_toplevel_handle_v1;
    static constexpr zwlr_foreign_toplevel_handle_v1_listener listener{
        .title = [](void* self, Handle*,
                    const char* title) { static_cast<Toplevel*>(self)->next.title = title; },
        .app_id = [](void* self, Handle*,
                     const char* id) { static_cast<Toplevel*>(self)->next.applicationID = id; },
        .output_enter = [](void*, Handle*, wl_output*) {},
        .output_leave = [](void*, Handle*, wl_output*) {},
        .state =
            [](void* self, Handle*, wl_array* states) {
                std::span all(static_cast<const std::uint32_t*>(states->data),
                              states->size / sizeof(std::uint32_t));
                constexpr std::uint32_t activated = ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED;
                static_cast<Toplevel*>(self)->next.isActivated =
                    std::ranges::find(all, activated) != all.end();
            },
        .done =
            [](void* self, Handle*) {
                auto& toplevel = *static_cast<Toplevel*>(self);
                toplevel.owner->apply(toplevel);
            },
        .closed =
            [](void* self, Handle*) {
                auto& toplevel = *static_cast<Toplevel*>(self);
                toplevel.owner->remove(toplevel);
            },
        .parent = [](void*, Handle*, Handle*) {}};
    m_toplevels.push_back({.owner = this, .handle = handle, .number = ++m_lastNumber});
    zwlr_foreign_toplevel_handle_v1_add_listener(handle, &listener, &m_toplevels.back());
}

void WlrFrontmostApplication::remove(Toplevel& toplevel)
{
    bool wasActivated = toplevel.state.isActivated;
    zwlr_foreign_toplevel_handle_v1_destroy(toplevel.handle);
    std::erase_if(m_toplevels, [&](const Toplevel& candidate) { return &candidate == &toplevel; });
    if (wasActivated)
        m_reporter.noteSwitch();
}

void WlrFrontmostApplication::apply(Toplevel& toplevel)
{
    auto former = std::exchange(toplevel.state, toplevel.next);
    bool cameForward = toplevel.state.isActivated && !former.isActivated;
    if (cameForward) {
        auto place = std::ranges::find(m_toplevels, toplevel.number, &Toplevel::number);
        m_toplevels.splice(m_toplevels.begin(), m_toplevels, place);
    }
    if (former.isActivated != toplevel.state.isActivated
        || (toplevel.state.isActivated && former.applicationID != toplevel.state.applicationID))
        m_reporter.noteSwitch();
    else if (toplevel.state.isActivated && former.title != toplevel.state.title)
        m_reporter.noteTitle();
}

std::optional<SeenWindow> WlrFrontmostApplication::read() const
{
    auto front =
        std::ranges::find_if(m_toplevels, [](const Toplevel& each) { return each.state.isActivated; });
    if (front == m_toplevels.end())
        return std::nullopt;
    const auto& id = front->state.applicationID;
    return SeenWindow{
        .window = front->number,
        .hints = {.applicationID = id, .windowClass = id},
        .title = front->state.title,
    };
}

} // namespace stintbook
