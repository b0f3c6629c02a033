#include "CommandLine/StatusTables.h"

#include <fmt/format.h>

#include "CommandLine/Formatting.h"

namespace stintbook {

namespace {

std::string pausedUntil(Session& session, const std::optional<Instant>& until)
{
    if (!until)
        return "Paused until you resume";
    return "Paused until " + shownDateTime(*until, session.calendar(), session.locale("LC_TIME"));
}

std::string shownRuntime(Session& session, const CaptureRuntimeState& runtime)
{
    switch (runtime.phase) {
    case CaptureRuntimeState::Phase::paused:
        return pausedUntil(session, runtime.until);
    case CaptureRuntimeState::Phase::active:
        return "Recording";
    case CaptureRuntimeState::Phase::stopped:
        break;
    }
    return "Stopped";
}

void printJSON(Session& session, const InstanceStatus& status)
{
    session.printJSON([&](JsonWriter& json) {
        if (status.openSegment) {
            json.key("openSegment");
            json.object([&] {
                json.member("applicationName", status.openSegment->applicationName);
                json.member("kind", status.openSegment->kind);
                json.member("start", status.openSegment->start);
            });
        }
        json.member("permission", rawValue(status.capture.permission));
        json.member("processIdentifier", status.processIdentifier);
        json.key("providers");
        json.array(status.providers, [&](const std::string& provider) { json.value(provider); });
        json.member("runtime", rawValue(status.capture.runtime.phase));
        json.member("storeFile", status.storeFile);
        json.member("unsaved", status.unsavedSegmentCount);
        json.member("until", status.capture.runtime.until);
    });
}

} // namespace

void printStatus(Session& session, const std::optional<InstanceStatus>& status)
{
    if (session.isJSON()) {
        printJSON(session, status.value_or(InstanceStatus{}));
        return;
    }
    auto& output = session.output();
    if (!status) {
        output << "Nothing is recording.\n";
        return;
    }
    output << shownRuntime(session, status->capture.runtime)
           << fmt::format(" (process {})\n", status->processIdentifier);
    if (status->capture.runtime.phase == CaptureRuntimeState::Phase::stopped)
        return;
    if (status->capture.permission != CapturePermissionState::granted)
        output << "Work context is limited\n";
    if (const auto& open = status->openSegment) {
        output << fmt::format("Since {}: {}{}{}\n",
                              shownTime(open->start, session.calendar(), session.locale("LC_TIME")),
                              open->kind, open->applicationName.empty() ? "" : ", ", open->applicationName);
    }
    for (const auto& provider : status->providers)
        output << provider << '\n';
    output << fmt::format("Unsaved: {}\nStore: {}\n", status->unsavedSegmentCount, status->storeFile);
}

void printPause(Session& session, const RequestedPause& pause)
{
    if (session.isJSON())
        session.printJSON([&](JsonWriter& json) { json.member("until", pause.deadline); });
    else
        session.output() << pausedUntil(session, pause.deadline) << '\n';
}

void printResumed(Session& session)
{
    if (session.isJSON())
        session.printJSON([](JsonWriter&) { });
    else
        session.output() << "No longer paused\n";
}

} // namespace stintbook
