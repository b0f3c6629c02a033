#include "Platform/DesktopBoundaries.h"

#include <utility>

namespace stintbook {

namespace {

/// Logind sleeps after five seconds whether or not the work is done.
constexpr Seconds longestWork{4};
/// A locker that confirms at all does so by then.
constexpr Seconds longestUnconfirmedLock{60};

} // namespace

DesktopBoundaries::DesktopBoundaries(EventLoop& loop, const TimeSource& timeSource)
    : m_loop(loop)
    , m_timeSource(timeSource)
    , m_hasLogind(LoginSession::isThere())
{
}

DesktopBoundaries::~DesktopBoundaries() = default;

void DesktopBoundaries::follow(Follower follower)
{
    m_follower = std::move(follower);
    m_login = LoginSession::follow(m_loop,
                                   {.willSleep = [this] { willSleep(); },
                                    .didWake = [this] { didWake(); },
                                    .lockedChanged = [this](bool isLocked) { setLocked(isLocked); },
                                    .lockAsked = [this](bool isLocking) { setLockAsked(isLocking); },
                                    .activeChanged = [this](bool isActive) { setAbsent(away, !isActive); }});
    followScreenSavers();
    m_screenSaver = X11ScreenSaver::follow(m_loop, [this](bool isOn) { setAbsent(screenOff, isOn); });
}

void DesktopBoundaries::stop()
{
    m_follower = {};
    m_slots.clear();
    m_sleepLimit.reset();
    m_screenSaver.reset();
    m_sessionBus.reset();
    m_login.reset();
    m_absences.reset();
}

void DesktopBoundaries::willSleep()
{
    report(ActivitySuspended{GapReason::systemSleep, m_timeSource.now()});
    auto done = [this, life = std::weak_ptr(m_life)] {
        if (life.expired())
            return;
        m_sleepLimit.reset();
        if (m_login)
            m_login->releaseSleep();
    };
    if (!m_beforeSleep) {
        done();
        return;
    }
    m_sleepLimit = m_loop.after(longestWork, done);
    m_beforeSleep(done);
}

void DesktopBoundaries::didWake()
{
    m_sleepLimit.reset();
    report(ActivityResumed{SystemResumeCause::systemWake, m_timeSource.now()});
}

void DesktopBoundaries::setLockAsked(bool isLocking)
{
    if (!isLocking) {
        setLocked(false);
        return;
    }
    m_lockAskedAt = m_timeSource.now();
    setAbsent(lockAsked, true);
}

void DesktopBoundaries::setLocked(bool isLocked)
{
    setAbsent(locked, isLocked);
    if (!isLocked)
        setAbsent(lockAsked, false);
}

void DesktopBoundaries::noteSwitch()
{
    bool isUnconfirmed = m_absences.test(lockAsked) && !m_absences.test(locked);
    if (isUnconfirmed && m_timeSource.now() - m_lockAskedAt > longestUnconfirmedLock)
        setAbsent(lockAsked, false);
}

void DesktopBoundaries::setAbsent(Absence kind, bool isAbsent)
{
    bool wasAbsent = m_absences.any();
    m_absences.set(kind, isAbsent);
    if (m_absences.any() == wasAbsent)
        return;
    if (wasAbsent)
        report(ActivityResumed{SystemResumeCause::sessionActive, m_timeSource.now()});
    else
        report(ActivitySuspended{GapReason::sessionInactive, m_timeSource.now()});
}

/// GNOME's and the common interface tell when the screen is locked or blank, also where logind is not told.
void DesktopBoundaries::followScreenSavers()
{
    auto bus = BusConnection::session();
    if (!bus)
        return;
    for (const char* interface : {"org.freedesktop.ScreenSaver", "org.gnome.ScreenSaver"}) {
        auto rule = std::string("type='signal',interface='") + interface + "',member='ActiveChanged'";
        auto slot = (*bus)->onSignal(rule, [this](BusMessage& signal) {
            if (auto isActive = signal.readBool())
                setAbsent(screenSaved, *isActive);
        });
        if (!slot) {
            m_slots.clear();
            return;
        }
        m_slots.push_back(std::move(slot));
    }
    m_sessionBus = std::move(*bus);
    m_sessionBus->attach(m_loop);
}

void DesktopBoundaries::report(const SystemBoundary& boundary)
{
    // A copy: the follower may stop this.
    if (auto follower = m_follower)
        follower(boundary);
}

} // namespace stintbook
