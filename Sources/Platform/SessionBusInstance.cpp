#include "Platform/SessionBusInstance.h"

#include "Base/RawValue.h"
#include "Base/Try.h"
#include "Platform/SessionBus.h"

namespace stintbook {

namespace {

constexpr Seconds patience{5};

template <typename... Arguments>
BusResult<BusMessage> ask(const char* interface, const char* member, const char* types,
                          Arguments... arguments)
{
    auto bus = TRY(BusConnection::session());
    return bus->call({sessionbus::name, sessionbus::path, interface, member}, patience, types, arguments...);
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

std::expected<void, std::string> SessionBusInstance::activate()
{
    return done(ask(sessionbus::applicationInterface, "Activate", "a{sv}", 0));
}

} // namespace stintbook
