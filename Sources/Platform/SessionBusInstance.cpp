#include "Platform/SessionBusInstance.h"

#include <chrono>
#include <thread>

#include <fmt/format.h>

#include "Base/RawValue.h"
#include "Base/Try.h"
#include "Platform/SessionBus.h"

namespace stintbook {

namespace {

constexpr Seconds patience{5};
/// Others may be at it before, and what is recorded last may have to wait for the store.
constexpr Seconds patienceWithFlush{30};
/// Years of history on a slow disk.
constexpr std::uint64_t patienceWithDeletion = 3600'000'000;

/// A copy that has just begun comes to the bus within this many attempts, 50 ms apart.
constexpr int activationAttempts = 20;

/// Who asks a copy that runs starts none.
BusMethod toRunningCopy(const char* interface, const char* member)
{
    return {sessionbus::name, sessionbus::path, interface, member, BusMethod::Starting::never};
}

template <typename... Arguments>
BusResult<BusMessage> ask(const char* interface, const char* member, const char* types,
                          Arguments... arguments)
{
    auto bus = TRY(BusConnection::session());
    return bus->call(toRunningCopy(interface, member), patience, types, arguments...);
}

/// No bus at all, or none of this name on it.
bool isNobody(const BusProblem& problem)
{
    return problem.isMissingService() || problem.name.empty();
}

std::string sentence(const BusProblem& problem)
{
    if (problem.isTimeout())
        return "The running copy does not answer.";
    if (isNobody(problem))
        return "Velloran is not running.";
    // What it says of a failure is a sentence of its own.
    if (problem.name == SD_BUS_ERROR_FAILED)
        return problem.text;
    return "The running copy refused: " + problem.text;
}

std::expected<void, std::string> done(const BusResult<BusMessage>& reply)
{
    if (!reply)
        return std::unexpected(sentence(reply.error()));
    return {};
}

/// One entry of the status; what this version does not know is left out.
void readEntry(BusMessage& reply, InstanceStatus& status)
{
    auto open = [&]() -> InstanceStatus::OpenSegment& {
        return status.openSegment ? *status.openSegment : status.openSegment.emplace();
    };
    auto key = reply.readText().value_or("");
    auto contents = reply.variantContents();
    if (!reply.enter('v', contents.c_str()))
        return;
    if (contents == "s") {
        auto text = reply.readText().value_or("");
        if (key == "phase")
            status.capture.runtime.phase =
                fromRawValue<CaptureRuntimeState::Phase>(text).value_or(CaptureRuntimeState::Phase::stopped);
        else if (key == "permission")
            status.capture.permission =
                fromRawValue<CapturePermissionState>(text).value_or(CapturePermissionState::notGranted);
        else if (key == "storeFile")
            status.storeFile = text;
        else if (key == "openSegmentKind")
            open().kind = text;
        else if (key == "openSegmentApplication")
            open().applicationName = text;
    } else if (contents == "d") {
        Instant at{reply.readDouble().value_or(0)};
        if (key == "until")
            status.capture.runtime.until = at;
        else if (key == "openSegmentStart")
            open().start = at;
    } else if (contents == "i") {
        auto number = reply.readInt32().value_or(0);
        if (key == "processIdentifier")
            status.processIdentifier = number;
        else if (key == "unsavedSegmentCount")
            status.unsavedSegmentCount = number;
    } else if (contents == "as" && key == "providers") {
        status.providers = reply.readTexts().value_or(std::vector<std::string>());
    } else {
        reply.skip();
    }
    reply.leave();
}

} // namespace

std::expected<std::optional<InstanceStatus>, std::string> SessionBusInstance::status()
{
    auto reply = ask(sessionbus::interface, "Status", "");
    if (!reply && !reply.error().isTimeout() && isNobody(reply.error()))
        return std::nullopt;
    if (!reply)
        return std::unexpected(sentence(reply.error()));
    InstanceStatus status;
    if (!reply->enter('a', "{sv}"))
        return std::unexpected("The running copy answers in a way that this one does not understand.");
    while (reply->enter('e', "sv")) {
        readEntry(*reply, status);
        reply->leave();
    }
    return status;
}

std::expected<void, std::string> SessionBusInstance::pause(std::optional<Instant> until)
{
    return done(ask(sessionbus::interface, "Pause", "d", until ? until->secondsSinceEpoch : 0.0));
}

std::expected<void, std::string> SessionBusInstance::resume()
{
    return done(ask(sessionbus::interface, "Resume", ""));
}

std::expected<DeletedActivity, std::string> SessionBusInstance::deleteActivity(
    const ActivityDataScope& scope, const DeletionProgress& progress)
{
    auto bus = BusConnection::session();
    if (!bus)
        return std::unexpected(sentence(bus.error()));
    const auto follower =
        (*bus)->onSignal(fmt::format("type='signal',path='{}',interface='{}',member='DeletionProgress'",
                                     sessionbus::path, sessionbus::interface),
                         [&](BusMessage& signal) {
                             if (const auto done = signal.readDouble(); done && progress)
                                 progress(*done);
                         });

    struct Answer {
        BusMessage message;
        static int arrived(sd_bus_message* reply, void* context, sd_bus_error*)
        {
            static_cast<Answer*>(context)->message = BusMessage::borrowed(reply);
            return 0;
        }
    } answer;
    const auto arguments = sessionbus::argumentsOf(scope);
    auto* const connection = (*bus)->get();
    sd_bus_message* composed = nullptr;
    int status = sd_bus_message_new_method_call(connection, &composed, sessionbus::name, sessionbus::path,
                                                sessionbus::interface, "DeleteActivity");
    const BusMessage call(composed);
    if (status >= 0)
        status = sd_bus_message_set_auto_start(composed, 0);
    if (status >= 0)
        status = sd_bus_message_append(composed, "sss", arguments.scope.c_str(), arguments.from.c_str(),
                                       arguments.through.c_str());
    if (status >= 0)
        status =
            sd_bus_call_async(connection, nullptr, composed, Answer::arrived, &answer, patienceWithDeletion);
    while (status >= 0 && answer.message.get() == nullptr) {
        status = sd_bus_process(connection, nullptr);
        if (status == 0)
            status = sd_bus_wait(connection, UINT64_MAX);
    }
    if (status < 0)
        return std::unexpected(sentence(BusConnection::problem(status)));
    if (const auto* error = sd_bus_message_get_error(answer.message.get()))
        return std::unexpected(sentence(BusConnection::problem(-sd_bus_error_get_errno(error), error)));
    const auto days = answer.message.readInt32();
    const auto isErased = answer.message.readBool();
    if (!days || !isErased)
        return std::unexpected("The running copy answers in a way that this one does not understand.");
    return DeletedActivity{.dayCount = *days,
                           .remains = *isErased ? DeletedActivity::Remains::erased
                                                : DeletedActivity::Remains::leftForTheNextStart};
}

std::expected<void, std::string> SessionBusInstance::flush()
{
    auto bus = BusConnection::session();
    if (!bus)
        return std::unexpected(sentence(bus.error()));
    return done((*bus)->call(toRunningCopy(sessionbus::interface, "Flush"), patienceWithFlush));
}

std::expected<void, std::string> SessionBusInstance::activate(const std::string& activationToken)
{
    const auto activate = [&] {
        if (activationToken.empty())
            return ask(sessionbus::applicationInterface, "Activate", "a{sv}", 0);
        return ask(sessionbus::applicationInterface, "Activate", "a{sv}", 1, sessionbus::activationToken, "s",
                   activationToken.c_str());
    };
    auto reply = activate();
    for (int attempt = 1; attempt < activationAttempts && !reply && reply.error().isMissingService();
         ++attempt) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        reply = activate();
    }
    return done(reply);
}

} // namespace stintbook
