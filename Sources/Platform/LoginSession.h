#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Base/FileDescriptor.h"
#include "Platform/BusConnection.h"

namespace stintbook {

inline constexpr const char* logindName = "org.freedesktop.login1";
inline constexpr const char* logindSessionInterface = "org.freedesktop.login1.Session";

/// The object of the login session that this process observes: the one of $XDG_SESSION_ID, else the one
/// that logind takes for the caller's, else the user's first. Absent where there is none, or no logind.
std::optional<std::string> loginSessionPath(BusConnection& systemBus);
/// A boolean property of a session, such as "Active".
BusResult<bool> loginSessionFlag(BusConnection& systemBus, const std::string& session, const char* name);

/// Follows the login session and the machine's sleep through logind. Lives on capture's thread.
class LoginSession {
public:
    struct Events {
        /// Before the machine sleeps. It does not sleep before `releaseSleep`, or before logind loses
        /// patience (five seconds).
        std::function<void()> willSleep;
        std::function<void()> didWake;
        std::function<void(bool)> lockedChanged;
        /// A desktop was asked to lock or unlock; not every one says what became of it.
        std::function<void(bool)> lockAsked;
        /// Whether the session is the one that its seat shows.
        std::function<void(bool)> activeChanged;
    };

    /// Whether a logind answers.
    static bool isThere();

    /// Reports the present state of the lock and of the seat at once. Null where no logind answers.
    static std::unique_ptr<LoginSession> follow(EventLoop& loop, Events events);

    void releaseSleep() { m_inhibitor.reset(); }

private:
    LoginSession(std::unique_ptr<BusConnection> bus, Events events)
        : m_bus(std::move(bus))
        , m_events(std::move(events))
    {
    }

    void subscribe(const std::string& session);
    void handleSleep(bool isAboutToSleep);
    void handleChange(BusMessage& signal);
    void inhibitSleep();

    std::unique_ptr<BusConnection> m_bus;
    Events m_events;
    std::string m_session;
    std::vector<BusConnection::Slot> m_slots;
    /// Logind waits as long as this is open.
    FileDescriptor m_inhibitor;
};

} // namespace stintbook
