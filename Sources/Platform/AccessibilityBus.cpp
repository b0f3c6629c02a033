#include "Platform/AccessibilityBus.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "Base/TimeSource.h"
#include "Base/Try.h"

namespace stintbook {

namespace {

constexpr Seconds longestCall{0.25};
constexpr const char* statusInterface = "org.a11y.Status";
constexpr const char* accessibleInterface = "org.a11y.atspi.Accessible";
constexpr std::uint32_t embedsRelation = 13;
/// No program shows more; a broken one may claim to.
constexpr std::size_t mostChildren = 500;

double uptime()
{
    return SystemAwakeClock().awake().value;
}

std::unexpected<BusProblem> malformed()
{
    return std::unexpected(BusConnection::problem(-EBADMSG));
}

/// An object reference, "(so)"; absent at an array's end.
std::optional<AccessibleObject> readObject(BusMessage& message)
{
    if (!message.enter('r', "so"))
        return std::nullopt;
    auto busName = message.readText();
    auto path = message.readText();
    message.leave();
    return AccessibleObject{busName.value_or(""), path.value_or("")};
}

std::vector<AccessibleObject> readObjects(BusMessage& message)
{
    std::vector<AccessibleObject> objects;
    if (!message.enter('a', "(so)"))
        return objects;
    while (auto object = readObject(message)) {
        if (objects.size() < mostChildren)
            objects.push_back(std::move(*object));
    }
    message.leave();
    return objects;
}

} // namespace

BusResult<void> AccessibilityBus::begin(Seconds limit)
{
    m_deadline = uptime() + limit.value;
    if (m_isBroken)
        forget();
    if (!m_session)
        m_session = TRY(BusConnection::session());
    return {};
}

Seconds AccessibilityBus::timeLeft() const
{
    return {std::max(0.0, m_deadline - uptime())};
}

BusResult<std::string> AccessibilityBus::address()
{
    auto reply = TRY(call(*m_session, {"org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress"}, ""));
    if (auto address = reply.readText())
        return std::move(*address);
    return malformed();
}

BusResult<void> AccessibilityBus::connectToTree()
{
    if (!m_bus)
        m_bus = TRY(BusConnection::at(TRY(address())));
    return {};
}

void AccessibilityBus::forget()
{
    m_isBroken = false;
    m_processes.clear();
    m_bus.reset();
    m_session.reset();
}

template <typename... Arguments>
BusResult<BusMessage> AccessibilityBus::call(BusConnection& bus, const BusMethod& method, const char* types,
                                             Arguments... arguments)
{
    auto time = std::min(timeLeft(), longestCall);
    if (time <= Seconds{0})
        return std::unexpected(BusConnection::problem(-ETIMEDOUT));
    auto reply = bus.call(method, time, types, arguments...);
    // What nobody named is a failure of the connection; a time-out is a program's.
    if (!reply && reply.error().name.empty() && !reply.error().isTimeout())
        m_isBroken = true;
    return reply;
}

template <typename... Arguments>
BusResult<BusMessage> AccessibilityBus::ask(const AccessibleObject& object, const char* interface,
                                            const char* member, const char* types, Arguments... arguments)
{
    return call(*m_bus, {object.busName.c_str(), object.path.c_str(), interface, member}, types,
                arguments...);
}

BusResult<bool> AccessibilityBus::isEnabled()
{
    auto reply =
        TRY(call(*m_session, {"org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Get"},
                 "ss", statusInterface, "IsEnabled"));
    reply.enter('v', "b");
    if (auto isEnabled = reply.readBool())
        return *isEnabled;
    return malformed();
}

BusResult<void> AccessibilityBus::enable()
{
    TRY(call(*m_session, {"org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set"}, "ssv",
             statusInterface, "IsEnabled", "b", 1));
    return {};
}

BusResult<std::vector<AccessibleObject>> AccessibilityBus::applications()
{
    TRY(connectToTree());
    auto found = TRY(children({"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"}));
    std::erase_if(m_processes, [&](const auto& known) {
        return std::ranges::find(found, known.first, &AccessibleObject::busName) == found.end();
    });
    return found;
}

BusResult<std::int32_t> AccessibilityBus::processOf(const AccessibleObject& application)
{
    if (auto known = m_processes.find(application.busName); known != m_processes.end())
        return known->second;
    auto reply = TRY(call(*m_bus,
                          {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "GetConnectionUnixProcessID"},
                          "s", application.busName.c_str()));
    auto process = static_cast<std::int32_t>(reply.readUInt32().value_or(0));
    m_processes[application.busName] = process;
    return process;
}

BusResult<std::vector<AccessibleObject>> AccessibilityBus::children(const AccessibleObject& object)
{
    auto reply = TRY(ask(object, accessibleInterface, "GetChildren", ""));
    return readObjects(reply);
}

BusResult<AccessibleFrame> AccessibilityBus::frame(const AccessibleObject& object)
{
    auto frameName = TRY(name(object));
    auto frameStates = TRY(states(object));
    return AccessibleFrame{object, std::move(frameName), (frameStates & accessibleActive) != 0};
}

BusResult<std::string> AccessibilityBus::textProperty(const AccessibleObject& object, const char* name)
{
    auto reply = TRY(ask(object, "org.freedesktop.DBus.Properties", "Get", "ss", accessibleInterface, name));
    reply.enter('v', "s");
    if (auto text = reply.readText())
        return std::move(*text);
    return malformed();
}

BusResult<std::string> AccessibilityBus::name(const AccessibleObject& object)
{
    return textProperty(object, "Name");
}

BusResult<std::uint32_t> AccessibilityBus::role(const AccessibleObject& object)
{
    auto reply = TRY(ask(object, accessibleInterface, "GetRole", ""));
    if (auto role = reply.readUInt32())
        return *role;
    return malformed();
}

BusResult<std::uint64_t> AccessibilityBus::states(const AccessibleObject& object)
{
    auto reply = TRY(ask(object, accessibleInterface, "GetState", ""));
    if (!reply.enter('a', "u"))
        return malformed();
    std::uint64_t low = reply.readUInt32().value_or(0);
    std::uint64_t high = reply.readUInt32().value_or(0);
    return low | high << 32;
}

BusResult<std::optional<AccessibleObject>> AccessibilityBus::embedded(const AccessibleObject& frame)
{
    auto reply = TRY(ask(frame, accessibleInterface, "GetRelationSet", ""));
    if (!reply.enter('a', "(ua(so))"))
        return malformed();
    while (reply.enter('r', "ua(so)")) {
        auto relation = reply.readUInt32();
        auto targets = readObjects(reply);
        reply.leave();
        if (relation == embedsRelation && !targets.empty())
            return targets.front();
    }
    return std::nullopt;
}

BusResult<std::string> AccessibilityBus::documentAttribute(const AccessibleObject& document, const char* key)
{
    auto reply = TRY(ask(document, "org.a11y.atspi.Document", "GetAttributeValue", "s", key));
    return reply.readText().value_or("");
}

BusResult<std::string> AccessibilityBus::text(const AccessibleObject& entry)
{
    auto reply = TRY(ask(entry, "org.a11y.atspi.Text", "GetText", "ii", 0, -1));
    return reply.readText().value_or("");
}

} // namespace stintbook
