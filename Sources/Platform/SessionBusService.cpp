#include "Platform/SessionBusService.h"

#include <cmath>

#include "Base/Log.h"
#include "Base/RawValue.h"
#include "Platform/SessionBus.h"

namespace stintbook {

namespace {

InstanceRequestHandling& handlerIn(void* context)
{
    return *static_cast<InstanceRequestHandling*>(context);
}

/// One entry of a{sv}.
template <typename... Values>
int append(sd_bus_message* message, const char* key, const char* type, Values... values)
{
    return sd_bus_message_append(message, "{sv}", key, type, values...);
}

int appendTexts(sd_bus_message* message, const char* key, const std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (const auto& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    int status = sd_bus_message_open_container(message, 'e', "sv");
    if (status >= 0)
        status = sd_bus_message_append(message, "s", key);
    if (status >= 0)
        status = sd_bus_message_open_container(message, 'v', "as");
    if (status >= 0)
        status = sd_bus_message_append_strv(message, pointers.data());
    if (status >= 0)
        status = sd_bus_message_close_container(message);
    return status < 0 ? status : sd_bus_message_close_container(message);
}

/// Appending keeps a first error in the message, so that one check at the end suffices.
int appendStatus(sd_bus_message* reply, const InstanceStatus& status)
{
    const auto& runtime = status.capture.runtime;
    sd_bus_message_open_container(reply, 'a', "{sv}");
    append(reply, "phase", "s", rawValue(runtime.phase).data());
    if (runtime.until)
        append(reply, "until", "d", runtime.until->secondsSinceEpoch);
    append(reply, "permission", "s", rawValue(status.capture.permission).data());
    append(reply, "storeFile", "s", status.storeFile.c_str());
    append(reply, "processIdentifier", "i", status.processIdentifier);
    append(reply, "unsavedSegmentCount", "i", status.unsavedSegmentCount);
    appendTexts(reply, "providers", status.providers);
    if (const auto& open = status.openSegment) {
        append(reply, "openSegmentStart", "d", open->start.secondsSinceEpoch);
        append(reply, "openSegmentKind", "s", open->kind.c_str());
        append(reply, "openSegmentApplication", "s", open->applicationName.c_str());
    }
    return sd_bus_message_close_container(reply);
}

int answerStatus(sd_bus_message* call, void* context, sd_bus_error*)
{
    sd_bus_message* created = nullptr;
    if (int status = sd_bus_message_new_method_return(call, &created); status < 0)
        return status;
    BusMessage reply(created);
    if (int status = appendStatus(created, handlerIn(context).status()); status < 0)
        return status;
    return sd_bus_send(nullptr, created, nullptr);
}

int answerPause(sd_bus_message* call, void* context, sd_bus_error* error)
{
    double until = BusMessage::borrowed(call).readDouble().value_or(NAN);
    if (!std::isfinite(until) || until < 0)
        return sd_bus_error_set(error, SD_BUS_ERROR_INVALID_ARGS, "A pause needs an instant, or 0.");
    handlerIn(context).pause(until > 0 ? std::optional(Instant{until}) : std::nullopt);
    return sd_bus_reply_method_return(call, "");
}

int answerResume(sd_bus_message* call, void* context, sd_bus_error*)
{
    handlerIn(context).resume();
    return sd_bus_reply_method_return(call, "");
}

int answerActivate(sd_bus_message* call, void* context, sd_bus_error*)
{
    handlerIn(context).activate();
    return sd_bus_reply_method_return(call, "");
}

constexpr auto unprivileged = SD_BUS_VTABLE_UNPRIVILEGED;

const sd_bus_vtable captureMethods[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Status", "", "a{sv}", answerStatus, unprivileged),
    SD_BUS_METHOD("Pause", "d", "", answerPause, unprivileged),
    SD_BUS_METHOD("Resume", "", "", answerResume, unprivileged),
    SD_BUS_VTABLE_END,
};

const sd_bus_vtable applicationMethods[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Activate", "a{sv}", "", answerActivate, unprivileged),
    SD_BUS_VTABLE_END,
};

} // namespace

bool SessionBusService::publish(InstanceRequestHandling& handler)
{
    auto bus = BusConnection::session();
    if (!bus)
        return false;
    auto publish = [&](const char* interface, const sd_bus_vtable* methods) -> BusConnection::Slot {
        sd_bus_slot* slot = nullptr;
        if (sd_bus_add_object_vtable((*bus)->get(), &slot, sessionbus::path, interface, methods, &handler)
            < 0)
            return {};
        return {slot, [](sd_bus_slot* ended) { sd_bus_slot_unref(ended); }};
    };
    m_object = publish(sessionbus::interface, captureMethods);
    m_application = publish(sessionbus::applicationInterface, applicationMethods);
    // Objects first: who waits for the name finds them.
    if (!m_object || !m_application || sd_bus_request_name((*bus)->get(), sessionbus::name, 0) < 0) {
        m_object.reset();
        m_application.reset();
        return false;
    }
    m_bus = std::move(*bus);
    m_bus->attach(m_loop, [] { log::error("The session bus is gone; nobody can ask this copy any more"); });
    return true;
}

} // namespace stintbook
