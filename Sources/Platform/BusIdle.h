#pragma once

#include <memory>
#include <string>

#include "Base/TimeSource.h"
#include "Capture/IdleStateProviding.h"
#include "Platform/BusConnection.h"

namespace stintbook {

/// Seconds since the last input, as GNOME's compositor tells them on the session bus.
class MutterIdle final : public IdleStateProviding {
public:
    /// Null where no such compositor runs.
    static std::unique_ptr<MutterIdle> find(const AwakeClock& awakeClock);

    std::expected<IdleState, std::string> sample() override;
    std::string name() const override { return "mutter"; }

private:
    MutterIdle(std::unique_ptr<BusConnection> bus, const AwakeClock& awakeClock)
        : m_bus(std::move(bus))
        , m_awakeClock(awakeClock)
    {
    }

    std::unique_ptr<BusConnection> m_bus;
    const AwakeClock& m_awakeClock;
};

/// The coarse hint that a desktop gives to the session manager: idle since some instant, or not idle. The
/// last resort.
class LogindIdle final : public IdleStateProviding {
public:
    /// Null where no session manager knows this process's session.
    static std::unique_ptr<LogindIdle> find(const TimeSource& timeSource, const AwakeClock& awakeClock);

    std::expected<IdleState, std::string> sample() override;
    std::string name() const override { return "logind"; }

private:
    LogindIdle(std::unique_ptr<BusConnection> bus, std::string session, const TimeSource& timeSource,
               const AwakeClock& awakeClock)
        : m_bus(std::move(bus))
        , m_session(std::move(session))
        , m_timeSource(timeSource)
        , m_awakeClock(awakeClock)
    {
    }

    std::unique_ptr<BusConnection> m_bus;
    std::string m_session;
    const TimeSource& m_timeSource;
    const AwakeClock& m_awakeClock;
};

} // namespace stintbook
