#pragma once

#include <optional>
#include <thread>

#include "App/Ports/ObservedDesktop.h"
#include "Platform/DesktopObservation.h"
#include "Platform/EventLoop.h"
#include "Platform/SessionBusService.h"

namespace stintbook {

/// The desktop this process runs in, observed from one loop, which also answers on the session bus. Looked at when
/// it is first asked about.
class DesktopThread final : public ObservedDesktop {
public:
    /// The clocks outlive it.
    DesktopThread(const TimeSource& timeSource, const AwakeClock& awakeClock);
    ~DesktopThread() override;
    DesktopThread(const DesktopThread&) = delete;
    DesktopThread& operator=(const DesktopThread&) = delete;

    bool canSeeApplications() override { return desktop().canSeeApplications(); }
    DesktopProviders providers() override;
    Executor& executor() override { return m_loop; }
    Timers& timers() override { return m_loop; }
    InstancePublishing& publishing() override { return *m_service; }
    void setBeforeSleep(std::function<void(std::function<void()> done)> work) override;

    void begin() override;
    void end() override;

private:
    DesktopObservation& desktop();

    const TimeSource& m_timeSource;
    const AwakeClock& m_awakeClock;
    EventLoop m_loop;
    std::optional<DesktopObservation> m_desktop;
    std::optional<SessionBusService> m_service;
    std::thread m_thread;
};

} // namespace stintbook
