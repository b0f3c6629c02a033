#include "Platform/WaylandIdle.h"

#include <algorithm>
#include <utility>

#include "Base/Log.h"
#include "Platform/WaylandProtocols.h"

namespace stintbook {

std::unique_ptr<WaylandIdle> WaylandIdle::find(EventLoop& loop, const AwakeClock& awakeClock,
                                               Seconds resolution)
{
    auto connection = WaylandConnection::open();
    if (!connection || !connection->offers(wl_seat_interface)
        || !(connection->offers(ext_idle_notifier_v1_interface)
             || connection->offers(org_kde_kwin_idle_interface)))
        return nullptr;
    std::unique_ptr<WaylandIdle> idle(new WaylandIdle(std::move(connection), awakeClock, resolution));
    idle->m_connection->attach(loop, [self = idle.get()] {
        log::error("The compositor is gone; input goes unnoticed");
        self->m_isLost = true;
    });
    return idle;
}

WaylandIdle::WaylandIdle(std::unique_ptr<WaylandConnection> connection, const AwakeClock& awakeClock,
                         Seconds resolution)
    : m_connection(std::move(connection))
    , m_awakeClock(awakeClock)
    , m_resolution(resolution)
    , m_activeSince(awakeClock.awake())
    , m_seat(m_connection->bind<wl_seat>(wl_seat_interface, 1))
    , m_notifier(m_connection->bind<ext_idle_notifier_v1>(ext_idle_notifier_v1_interface, 1))
{
    if (!m_notifier)
        m_kdeIdle = m_connection->bind<org_kde_kwin_idle>(org_kde_kwin_idle_interface, 1);
    ask();
}

WaylandIdle::~WaylandIdle()
{
    withdraw();
    if (m_notifier)
        ext_idle_notifier_v1_destroy(m_notifier);
    if (m_kdeIdle)
        org_kde_kwin_idle_destroy(m_kdeIdle);
    wl_seat_destroy(m_seat);
}

void WaylandIdle::ask()
{
    auto milliseconds = static_cast<std::uint32_t>(m_resolution.value * 1000);
    if (m_notifier) {
        static constexpr ext_idle_notification_v1_listener listener{
            .idled = [](void* self,
                        ext_idle_notification_v1*) { static_cast<WaylandIdle*>(self)->handleIdled(); },
            .resumed = [](void* self,
                          ext_idle_notification_v1*) { static_cast<WaylandIdle*>(self)->handleResumed(); }};
        m_notification = ext_idle_notifier_v1_get_idle_notification(m_notifier, milliseconds, m_seat);
        ext_idle_notification_v1_add_listener(m_notification, &listener, this);
    } else {
        static constexpr org_kde_kwin_idle_timeout_listener listener{
            .idle = [](void* self,
                       org_kde_kwin_idle_timeout*) { static_cast<WaylandIdle*>(self)->handleIdled(); },
            .resumed = [](void* self,
                          org_kde_kwin_idle_timeout*) { static_cast<WaylandIdle*>(self)->handleResumed(); }};
        m_kdeTimeout = org_kde_kwin_idle_get_idle_timeout(m_kdeIdle, m_seat, milliseconds);
        org_kde_kwin_idle_timeout_add_listener(m_kdeTimeout, &listener, this);
    }
    m_connection->flush();
}

void WaylandIdle::withdraw()
{
    if (m_notification)
        ext_idle_notification_v1_destroy(std::exchange(m_notification, nullptr));
    if (m_kdeTimeout)
        org_kde_kwin_idle_timeout_release(std::exchange(m_kdeTimeout, nullptr));
}

void WaylandIdle::handleIdled()
{
    m_idleSince = m_awakeClock.awake() - m_resolution;
}

void WaylandIdle::handleResumed()
{
    m_idleSince.reset();
    m_activeSince = m_awakeClock.awake();
}

void WaylandIdle::noteSwitch()
{
    if (!m_idleSince || m_isLost)
        return;
    withdraw();
    handleResumed();
    ask();
}

std::expected<IdleState, std::string> WaylandIdle::sample()
{
    if (m_isLost)
        return std::unexpected("The compositor is gone.");
    auto now = m_awakeClock.awake();
    auto idle = m_idleSince ? now - *m_idleSince : std::min(now - m_activeSince, m_resolution);
    return IdleState{.idle = idle, .awake = now};
}

} // namespace stintbook
