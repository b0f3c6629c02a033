#include "Platform/LoginSession.h"

#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

#include "Base/Log.h"
#include "Base/Try.h"

namespace stintbook {

namespace {

constexpr const char* managerPath = "/org/freedesktop/login1";
constexpr const char* managerInterface = "org.freedesktop.login1.Manager";
constexpr Seconds patience{1};

BusMethod manager(const char* member)
{
    return {logindName, managerPath, managerInterface, member};
}

/// A path that is an object's: logind's double in tests answers for any name.
std::optional<std::string> existing(BusConnection& bus, std::optional<std::string> path)
{
    return path && loginSessionFlag(bus, *path, "Active") ? path : std::nullopt;
}

std::optional<std::string> pathIn(BusConnection& bus, BusResult<BusMessage> reply)
{
    return reply ? existing(bus, reply->readText()) : std::nullopt;
}

std::optional<std::string> firstSessionOfUser(BusConnection& bus)
{
    auto sessions = bus.call(manager("ListSessions"), patience);
    if (!sessions || !sessions->enter('a', "(susso)"))
        return std::nullopt;
    while (sessions->enter('r', "susso")) {
        sessions->skip();
        auto user = sessions->readUInt32();
        sessions->skip();
        sessions->skip();
        auto path = sessions->readText();
        sessions->leave();
        if (user == getuid())
            return existing(bus, std::move(path));
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> loginSessionPath(BusConnection& bus)
{
    std::optional<std::string> path;
    if (const char* id = std::getenv("XDG_SESSION_ID"); id && *id)
        path = pathIn(bus, bus.call(manager("GetSession"), patience, "s", id));
    if (!path)
        path = pathIn(bus, bus.call(manager("GetSession"), patience, "s", "auto"));
    if (!path)
        path = pathIn(bus, bus.call(manager("GetSessionByPID"), patience, "u", std::uint32_t(getpid())));
    return path ? path : firstSessionOfUser(bus);
}

BusResult<bool> loginSessionFlag(BusConnection& bus, const std::string& session, const char* name)
{
    auto value = TRY(bus.property(logindName, session.c_str(), logindSessionInterface, name, patience));
    value.enter('v', "b");
    if (auto flag = value.readBool())
        return *flag;
    return std::unexpected(BusConnection::problem(-EBADMSG));
}

bool LoginSession::isThere()
{
    auto bus = BusConnection::system();
    return bus && (*bus)->call(manager("ListSessions"), patience);
}

std::unique_ptr<LoginSession> LoginSession::follow(EventLoop& loop, Events events)
{
    auto bus = BusConnection::system();
    if (!bus)
        return nullptr;
    if (!(*bus)->call(manager("ListSessions"), patience))
        return nullptr;
    // A machine without sessions of its own (a container) may sleep all the same.
    auto session = loginSessionPath(**bus);
    std::unique_ptr<LoginSession> login(new LoginSession(std::move(*bus), std::move(events)));
    login->subscribe(session.value_or(""));
    login->m_bus->attach(loop, [] { log::error("The system bus is gone; sleep and locking go unnoticed"); });
    return login;
}

void LoginSession::subscribe(const std::string& session)
{
    auto on = [this](const std::string& path, const std::string& interface, const std::string& member,
                     BusConnection::Handler handler) {
        auto rule = "type='signal',sender='" + std::string(logindName) + "',path='" + path + "',interface='"
            + interface + "',member='" + member + "'";
        m_slots.push_back(m_bus->onSignal(rule, std::move(handler)));
    };
    inhibitSleep();
    on(managerPath, managerInterface, "PrepareForSleep", [this](BusMessage& signal) {
        if (auto isAboutToSleep = signal.readBool())
            handleSleep(*isAboutToSleep);
    });
    if (session.empty())
        return;
    on(session, logindSessionInterface, "Lock", [this](BusMessage&) { m_events.lockAsked(true); });
    on(session, logindSessionInterface, "Unlock", [this](BusMessage&) { m_events.lockAsked(false); });
    on(session, "org.freedesktop.DBus.Properties", "PropertiesChanged",
       [this](BusMessage& signal) { handleChange(signal); });
    m_session = session;
    if (auto isLocked = loginSessionFlag(*m_bus, session, "LockedHint"))
        m_events.lockedChanged(*isLocked);
    if (auto isActive = loginSessionFlag(*m_bus, session, "Active"))
        m_events.activeChanged(*isActive);
}

void LoginSession::handleSleep(bool isAboutToSleep)
{
    if (isAboutToSleep) {
        m_events.willSleep();
        return;
    }
    m_events.didWake();
    inhibitSleep();
}

void LoginSession::handleChange(BusMessage& signal)
{
    if (signal.readText() != logindSessionInterface || !signal.enter('a', "{sv}"))
        return;
    while (signal.enter('e', "sv")) {
        auto name = signal.readText();
        if ((name == "LockedHint" || name == "Active") && signal.enter('v', "b")) {
            auto& changed = name == "Active" ? m_events.activeChanged : m_events.lockedChanged;
            if (auto flag = signal.readBool())
                changed(*flag);
            signal.leave();
        } else {
            signal.skip();
        }
        signal.leave();
    }
    signal.leave();
    // A property may also be announced without its value.
    if (!signal.enter('a', "s"))
        return;
    while (auto name = signal.readText()) {
        if (name != "LockedHint" && name != "Active")
            continue;
        auto& changed = name == "Active" ? m_events.activeChanged : m_events.lockedChanged;
        if (auto flag = loginSessionFlag(*m_bus, m_session, name->c_str()))
            changed(*flag);
    }
}

void LoginSession::inhibitSleep()
{
    auto reply = m_bus->call(manager("Inhibit"), patience, "ssss", "sleep", "Velloran",
                             "Saves what was recorded before the machine sleeps", "delay");
    if (!reply)
        return;
    int descriptor = -1;
    // The message owns its descriptor.
    if (sd_bus_message_read_basic(reply->get(), 'h', &descriptor) > 0)
        m_inhibitor = FileDescriptor(fcntl(descriptor, F_DUPFD_CLOEXEC, 3));
}

} // namespace stintbook
