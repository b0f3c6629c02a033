#pragma once

#include <bitset>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Base/TimeSource.h"
#include "Capture/SystemBoundaryProviding.h"
#include "Platform/BusConnection.h"
#include "Platform/LoginSession.h"
#include "Platform/X11ScreenSaver.h"

namespace stintbook {

/// Sleep and wake from logind, and an inactive session: locked, with its screen off, or not the one that
/// its seat shows. These overlap; `sessionActive` comes when the last of them has ended.
///
/// Without logind, a session bus or X11 the boundaries they would tell stay unknown, which is ordinary.
class DesktopBoundaries final : public SystemBoundaryProviding {
public:
    /// Is given what to call when the machine may sleep.
    using BeforeSleep = std::function<void(std::function<void()> done)>;

    DesktopBoundaries(EventLoop& loop, const TimeSource& timeSource);
    ~DesktopBoundaries() override;
    DesktopBoundaries(const DesktopBoundaries&) = delete;
    DesktopBoundaries& operator=(const DesktopBoundaries&) = delete;

    /// Work that the machine's sleep waits for, at most four seconds, after the boundary was reported. To be
    /// set before `follow`.
    void setBeforeSleep(BeforeSleep work) { m_beforeSleep = std::move(work); }

    void follow(Follower follower) override;
    void stop() override;
    /// Another application came to the front. A session that was asked to lock a while ago, without anything
    /// having said that it did, is in use again: its locker does not tell when it lets its user in.
    void noteSwitch();
    /// "logind", or "none" where sleep is noticed by the clocks alone.
    std::string name() const override { return m_hasLogind ? "logind" : "none"; }

private:
    enum Absence { lockAsked, locked, screenSaved, screenOff, away, absenceCount };

    void willSleep();
    void didWake();
    void setLockAsked(bool isLocking);
    void setLocked(bool isLocked);
    void setAbsent(Absence kind, bool isAbsent);
    void followScreenSavers();
    void report(const SystemBoundary& boundary);

    EventLoop& m_loop;
    const TimeSource& m_timeSource;
    bool m_hasLogind;
    BeforeSleep m_beforeSleep;
    Follower m_follower;
    std::bitset<absenceCount> m_absences;
    Instant m_lockAskedAt;

    std::unique_ptr<LoginSession> m_login;
    std::unique_ptr<Timers::Scheduled> m_sleepLimit;
    std::unique_ptr<BusConnection> m_sessionBus;
    std::vector<BusConnection::Slot> m_slots;
    std::unique_ptr<X11ScreenSaver> m_screenSaver;
    std::shared_ptr<bool> m_life = std::make_shared<bool>(true);
};

} // namespace stintbook
