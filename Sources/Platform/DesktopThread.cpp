#include "Platform/DesktopThread.h"

#include <utility>

#include <pthread.h>

namespace stintbook {

DesktopThread::DesktopThread(const TimeSource& timeSource, const AwakeClock& awakeClock)
    : m_desktop(m_loop, timeSource, awakeClock)
    , m_service(std::in_place, m_loop)
{
}

DesktopThread::~DesktopThread()
{
    end();
}

DesktopProviders DesktopThread::providers()
{
    return {.frontmost = m_desktop.frontmost(),
            .focusedWindow = m_desktop.windowReader(),
            .browserDomain = m_desktop.windowReader(),
            .boundaries = m_desktop.boundaries(),
            .idle = m_desktop.idle(),
            .accessibilityTrust = m_desktop.accessibilityTrust(),
            .calendar = m_desktop.calendar(),
            .sources = m_desktop.sources()};
}

void DesktopThread::setBeforeSleep(std::function<void(std::function<void()> done)> work)
{
    m_desktop.boundaries().setBeforeSleep(std::move(work));
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
