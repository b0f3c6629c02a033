#include "Platform/SessionBusService.h"

#include <cmath>

#include "Base/Log.h"
#include "Base/RawValue.h"
#include "Platform/SessionBus.h"

namespace stintbook {

namespace {

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

/// So many requests that hold the writer may wait.
constexpr std::size_t mostWaiting = 16;
/// Capture has this long to itself between two of them.
constexpr Seconds rest{1};

} // namespace

/// What is called on the bus. Replies that come later keep the call.
struct SessionBusService::Methods {
    static SessionBusService& service(void* context) { return *static_cast<SessionBusService*>(context); }
    static InstanceRequestHandling& handler(void* context) { return *service(context).m_handler; }

    static int status(sd_bus_message* call, void* context, sd_bus_error*)
    {
        sd_bus_message* created = nullptr;
        if (int status = sd_bus_message_new_method_return(call, &created); status < 0)
            return status;
        BusMessage reply(created);
        if (int status = appendStatus(created, handler(context).status()); status < 0)
            return status;
        return sd_bus_send(nullptr, created, nullptr);
    }

    static int pause(sd_bus_message* call, void* context, sd_bus_error* error)
    {
        double until = BusMessage::borrowed(call).readDouble().value_or(NAN);
        if (!std::isfinite(until) || until < 0)
            return sd_bus_error_set(error, SD_BUS_ERROR_INVALID_ARGS, "A pause needs an instant, or 0.");
        return answer(call, error,
                      handler(context).pause(until > 0 ? std::optional(Instant{until}) : std::nullopt));
    }

    static int resume(sd_bus_message* call, void* context, sd_bus_error* error)
    {
        return answer(call, error, handler(context).resume());
    }

    static int deleteActivity(sd_bus_message* call, void* context, sd_bus_error* error)
    {
        auto arguments = BusMessage::borrowed(call);
        auto scope =
            sessionbus::scopeFrom({arguments.readText().value_or(""), arguments.readText().value_or(""),
                                   arguments.readText().value_or("")});
        if (!scope)
            return sd_bus_error_set(error, SD_BUS_ERROR_INVALID_ARGS, "These days are no history.");
        return enqueue(context, error,
                       [&handling = handler(context), scope = *std::move(scope),
                        kept = kept(call)](const std::function<void()>& ended) {
                           handling.deleteActivity(
                               scope,
                               [kept, ended](const std::expected<DeletedActivity, std::string>& deleted) {
                                   answer(kept, deleted);
                                   ended();
                               },
                               teller(kept));
                       });
    }

    static int flush(sd_bus_message* call, void* context, sd_bus_error* error)
    {
        return enqueue(context, error,
                       [&handling = handler(context), kept = kept(call)](const std::function<void()>& ended) {
                           handling.flush([kept, ended](const std::expected<void, std::string>& flushed) {
                               if (flushed)
                                   sd_bus_reply_method_return(kept->get(), "");
                               else
                                   fail(kept, flushed.error());
                               ended();
                           });
                       });
    }

    static int activate(sd_bus_message* call, void* context, sd_bus_error* error)
    {
        auto launch = BusMessage::borrowed(call);
        return comeForward(call, context, error, ApplicationWindow::review, activationToken(launch));
    }

    static int open(sd_bus_message* call, void* context, sd_bus_error* error)
    {
        auto launch = BusMessage::borrowed(call);
        if (!launch.readTexts().value_or(std::vector<std::string>()).empty())
            return sd_bus_error_set(error, SD_BUS_ERROR_NOT_SUPPORTED, "Velloran opens no files.");
        return comeForward(call, context, error, ApplicationWindow::review, activationToken(launch));
    }

    static int activateAction(sd_bus_message* call, void* context, sd_bus_error* error)
    {
        auto launch = BusMessage::borrowed(call);
        const auto action = launch.readText().value_or("");
        // The action's parameters: none takes any.
        launch.skip();
        if (action == "pause")
            return answer(call, error, handler(context).pause(std::nullopt));
        if (action == "resume")
            return answer(call, error, handler(context).resume());
        if (action == "review")
            return comeForward(call, context, error, ApplicationWindow::review, activationToken(launch));
        if (action == "settings")
            return comeForward(call, context, error, ApplicationWindow::settings, activationToken(launch));
        if (action != "quit")
            return sd_bus_error_set(error, SD_BUS_ERROR_INVALID_ARGS, "Velloran knows no such action.");
        handler(context).quit();
        return sd_bus_reply_method_return(call, "");
    }

private:
    static int answer(sd_bus_message* call, sd_bus_error* error, const std::expected<void, std::string>& done)
    {
        if (!done)
            return sd_bus_error_set(error, SD_BUS_ERROR_FAILED, done.error().c_str());
        return sd_bus_reply_method_return(call, "");
    }

    static int comeForward(sd_bus_message* call, void* context, sd_bus_error* error, ApplicationWindow window,
                           const std::string& token)
    {
        if (!handler(context).activate(window, token))
            return sd_bus_error_set(error, SD_BUS_ERROR_FAILED, "This copy of Velloran has no window.");
        return sd_bus_reply_method_return(call, "");
    }

    /// Of what a launch says of itself, which stands next.
    static std::string activationToken(BusMessage& launch)
    {
        std::string token;
        if (!launch.enter('a', "{sv}"))
            return token;
        while (launch.enter('e', "sv")) {
            const bool isToken = launch.readText() == sessionbus::activationToken;
            if (isToken && launch.enter('v', "s")) {
                token = launch.readText().value_or("");
                launch.leave();
            } else {
                launch.skip();
            }
            launch.leave();
        }
        return token;
    }

    /// A call that is answered later.
    using Call = std::shared_ptr<const BusMessage>;

    static Call kept(sd_bus_message* call)
    {
        return std::make_shared<const BusMessage>(BusMessage::borrowed(call));
    }

    static int enqueue(void* context, sd_bus_error* error, Holding request)
    {
        // Anything but zero tells the bus that an answer is on its way.
        if (service(context).enqueue(std::move(request)))
            return 1;
        return sd_bus_error_set(error, SD_BUS_ERROR_LIMITS_EXCEEDED, "Too many requests are waiting.");
    }

    static void answer(const Call& call, const std::expected<DeletedActivity, std::string>& deleted)
    {
        if (!deleted)
            return fail(call, deleted.error());
        const bool isErased = deleted->remains == DeletedActivity::Remains::erased;
        sd_bus_reply_method_return(call->get(), "ib", deleted->dayCount, isErased ? 1 : 0);
    }

    static void fail(const Call& call, const std::string& sentence)
    {
        sd_bus_reply_method_errorf(call->get(), SD_BUS_ERROR_FAILED, "%s", sentence.c_str());
    }

    /// Tells the caller alone, and only what is worth a message.
    static DeletionProgress teller(const Call& call)
    {
        // Shared by the copies, one of which is made for each piece of news.
        return [call, told = std::make_shared<double>(0)](double done) {
            if (done < *told + 0.01)
                return;
            *told = done;
            sd_bus_message* created = nullptr;
            if (sd_bus_message_new_signal(sd_bus_message_get_bus(call->get()), &created, sessionbus::path,
                                          sessionbus::interface, "DeletionProgress")
                < 0)
                return;
            const BusMessage signal(created);
            sd_bus_message_append(created, "d", done);
            sd_bus_send_to(nullptr, created, call->sender().c_str(), nullptr);
        };
    }
};

bool SessionBusService::enqueue(Holding request)
{
    if (m_waiting.size() >= mostWaiting)
        return false;
    m_waiting.push_back(std::move(request));
    startNext();
    return true;
}

void SessionBusService::startNext()
{
    if (m_isHolding || m_rest || m_waiting.empty())
        return;
    m_isHolding = true;
    auto request = std::move(m_waiting.front());
    m_waiting.pop_front();
    request([this, isAlive = std::weak_ptr(m_isAlive)] {
        if (isAlive.expired())
            return;
        m_isHolding = false;
        m_rest = m_loop.after(rest, [this] {
            m_rest.reset();
            startNext();
        });
    });
}

void SessionBusService::announceStatus()
{
    if (!m_bus)
        return;
    sd_bus_message* created = nullptr;
    if (sd_bus_message_new_signal(m_bus->get(), &created, sessionbus::path, sessionbus::interface,
                                  "StatusChanged")
        < 0)
        return;
    const BusMessage signal(created);
    if (appendStatus(created, m_handler->status()) >= 0)
        sd_bus_send(nullptr, created, nullptr);
}

bool SessionBusService::publish(InstanceRequestHandling& handler)
{
    constexpr auto unprivileged = SD_BUS_VTABLE_UNPRIVILEGED;
    static const sd_bus_vtable captureMethods[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("Status", "", "a{sv}", Methods::status, unprivileged),
        SD_BUS_METHOD("Pause", "d", "", Methods::pause, unprivileged),
        SD_BUS_METHOD("Resume", "", "", Methods::resume, unprivileged),
        SD_BUS_METHOD("DeleteActivity", "sss", "ib", Methods::deleteActivity, unprivileged),
        SD_BUS_METHOD("Flush", "", "", Methods::flush, unprivileged),
        SD_BUS_SIGNAL("StatusChanged", "a{sv}", 0),
        SD_BUS_SIGNAL("DeletionProgress", "d", 0),
        SD_BUS_VTABLE_END,
    };
    static const sd_bus_vtable applicationMethods[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("Activate", "a{sv}", "", Methods::activate, unprivileged),
        SD_BUS_METHOD("Open", "asa{sv}", "", Methods::open, unprivileged),
        SD_BUS_METHOD("ActivateAction", "sava{sv}", "", Methods::activateAction, unprivileged),
        SD_BUS_VTABLE_END,
    };
    m_handler = &handler;
    auto bus = BusConnection::session();
    if (!bus)
        return false;
    auto publish = [&](const char* interface, const sd_bus_vtable* methods) -> BusConnection::Slot {
        sd_bus_slot* slot = nullptr;
        if (sd_bus_add_object_vtable((*bus)->get(), &slot, sessionbus::path, interface, methods, this) < 0)
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
