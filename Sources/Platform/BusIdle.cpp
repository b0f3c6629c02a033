#include "Platform/BusIdle.h"

#include <algorithm>
#include <cerrno>

#include "Base/Try.h"
#include "Platform/LoginSession.h"

namespace stintbook {

namespace {

/// A sample blocks capture's thread, so it may not take long.
constexpr Seconds patience{0.25};

BusResult<Seconds> mutterIdleTime(BusConnection& bus)
{
    auto reply = TRY(bus.call({"org.gnome.Mutter.IdleMonitor", "/org/gnome/Mutter/IdleMonitor/Core",
                               "org.gnome.Mutter.IdleMonitor", "GetIdletime"},
                              patience));
    auto milliseconds = reply.readUInt64();
    if (!milliseconds)
        return std::unexpected(BusConnection::problem(-EBADMSG));
    return Seconds{static_cast<double>(*milliseconds) / 1000};
}

} // namespace

std::unique_ptr<MutterIdle> MutterIdle::find(const AwakeClock& awakeClock)
{
    auto bus = BusConnection::session();
    if (!bus || !mutterIdleTime(**bus))
        return nullptr;
    return std::unique_ptr<MutterIdle>(new MutterIdle(std::move(*bus), awakeClock));
}

std::expected<IdleState, std::string> MutterIdle::sample()
{
    auto idle = mutterIdleTime(*m_bus);
    if (!idle)
        return std::unexpected(idle.error().text);
    return IdleState{.idle = *idle, .awake = m_awakeClock.awake()};
}

std::unique_ptr<LogindIdle> LogindIdle::find(const TimeSource& timeSource, const AwakeClock& awakeClock)
{
    auto bus = BusConnection::system();
    if (!bus)
        return nullptr;
    auto session = loginSessionPath(**bus);
    if (!session)
        return nullptr;
    return std::unique_ptr<LogindIdle>(
        new LogindIdle(std::move(*bus), std::move(*session), timeSource, awakeClock));
}

std::expected<IdleState, std::string> LogindIdle::sample()
{
    auto isIdle = loginSessionFlag(*m_bus, m_session, "IdleHint");
    if (!isIdle)
        return std::unexpected(isIdle.error().text);
    if (!*isIdle)
        return IdleState{.idle = {0}, .awake = m_awakeClock.awake()};
    auto since =
        m_bus->property(logindName, m_session.c_str(), logindSessionInterface, "IdleSinceHint", patience);
    if (!since)
        return std::unexpected(since.error().text);
    since->enter('v', "t");
    Instant idleSince{static_cast<double>(since->readUInt64().value_or(0)) / 1e6};
    return IdleState{.idle = {std::max(0.0, (m_timeSource.now() - idleSince).value)},
                     .awake = m_awakeClock.awake()};
}

} // namespace stintbook
