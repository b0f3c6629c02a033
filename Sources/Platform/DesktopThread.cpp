#include "Platform/DesktopThread.h"

#include <utility>

#include <pthread.h>

namespace stintbook {

DesktopThread::DesktopThread(const TimeSource& timeSource, const AwakeClock& awakeClock)
    : m_timeSource(timeSource)
    , m_awakeClock(awakeClock)
    , m_service(std::in_place, m_loop)
{
}

DesktopThread::~DesktopThread()
{
    end();
}

DesktopObservation& DesktopThread::desktop()
{
    return m_desktop ? *m_desktop : m_desktop.emplace(m_loop, m_timeSource, m_awakeClock);
}

DesktopProviders DesktopThread::providers()
{
    auto& desktop = this->desktop();
    return {.frontmost = desktop.frontmost(),
            .focusedWindow = desktop.windowReader(),
            .browserDomain = desktop.windowReader(),
            .boundaries = desktop.boundaries(),
            .idle = desktop.idle(),
            .accessibilityTrust = desktop.accessibilityTrust(),
            .calendar = desktop.calendar(),
            .sources = desktop.sources()};
}

void DesktopThread::setBeforeSleep(std::function<void(std::function<void()> done)> work)
{
    desktop().boundaries().setBeforeSleep(std::move(work));
}

void DesktopThread::begin()
{
    m_thread = std::thread([this] { m_loop.run(); });
    pthread_setname_np(m_thread.native_handle(), "capture");
}

void DesktopThread::end()
{
    if (!m_thread.joinable())
        return;
    // From within, because one that has not begun to run yet would not notice.
    m_loop.post([this] { m_loop.stop(); });
    m_thread.join();
    // Whoever answered its callers goes next.
    m_service.reset();
}

} // namespace stintbook
