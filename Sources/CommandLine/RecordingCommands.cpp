#include <algorithm>
#include <csignal>
#include <fstream>

#include <fmt/format.h>

#include "App/RecordingPause.h"
#include "Base/Log.h"
#include "Capture/TraceReplay.h"
#include "CommandLine/Arguments.h"
#include "CommandLine/CommandTree.h"
#include "CommandLine/Formatting.h"
#include "CommandLine/RecordRun.h"
#include "CommandLine/StatusTables.h"
#include "Platform/SessionBusInstance.h"
#include "Store/ActivityDataRecords.h"
#include "Store/PersistentActivitySegmentRepository.h"
#include "Store/RecordWriting.h"

namespace stintbook {

namespace {

void addRecord(CommandTree& tree)
{
    auto verb = tree.verb("record", "Record until interrupted");
    const auto& duration = verb.option("--for", "SECONDS", "Stop by itself after so long");
    const auto& trace =
        verb.option("--trace", "FILE", "Also write everything that capture is told as a trace");
    const auto& idleThreshold = verb.hiddenOption("--idle-threshold", "SECONDS");
    const auto& idlePoll = verb.hiddenOption("--idle-poll-interval", "SECONDS");
    verb.runs([&](Session& session) {
        RecordRequest request;
        if (duration)
            request.duration = secondsArgument(*duration);
        if (idleThreshold)
            request.configuration.idleThreshold = secondsArgument(*idleThreshold);
        if (idlePoll)
            request.configuration.idlePollInterval = secondsArgument(*idlePoll);
        if (trace)
            request.trace = *trace;
        record(session, request);
    });
}

void addReplay(CommandTree& tree)
{
    auto verb = tree.verb("replay", "Run a trace into the store");
    const auto& file = verb.argument("TRACE", "The trace's file");
    const auto& idleThreshold = verb.hiddenOption("--idle-threshold", "SECONDS");
    verb.runs([&](Session& session) {
        std::ifstream stream(file, std::ios::binary);
        if (!stream)
            throw Refusal{fmt::format("The trace “{}” could not be read, so nothing was replayed.", file)};
        const auto store = orRefuse(session.ownStore());
        // What the log would tell of is another day's, and the report tells it.
        log::replaceSink([](log::Level, std::string_view) { });
        auto result = replayTrace(stream, store->sharedSegments(),
                                  session.isJSON() ? ReplayedSegments::handedBack : ReplayedSegments::counted,
                                  idleThreshold ? secondsArgument(*idleThreshold)
                                                : CaptureConfiguration{}.idleThreshold);
        if (result.problem)
            throw Refusal{message(*result.problem)};
        if (!session.isJSON()) {
            session.output() << fmt::format("Replayed: {} saved, {} unsaved ({}).\n", result.savedCount,
                                            result.unsavedCount, rawValue(result.outcome.kind));
            return;
        }
        // They come as they were lived, and a clock may have been set back.
        std::ranges::sort(result.segments, segmentOrder);
        session.printJSON([&](JsonWriter& json) {
            json.member("outcome", rawValue(result.outcome.kind));
            json.member("saved", static_cast<std::int64_t>(result.savedCount));
            recordArray(json, "segments", result.segments);
            json.member("unsaved", static_cast<std::int64_t>(result.unsavedCount));
        });
    });
}

void addStatus(CommandTree& tree)
{
    auto verb = tree.verb("status", "What the running copy is doing");
    verb.runs([](Session& session) {
        SessionBusInstance instance;
        const auto status = instance.status();
        if (!status)
            throw Refusal{status.error()};
        printStatus(session, *status);
    });
}

/// A pause as the command line writes it.
TimedPauseOption pauseOption(const std::string& word)
{
    if (word == "15m")
        return TimedPauseOption::fifteenMinutes;
    if (word == "1h")
        return TimedPauseOption::oneHour;
    return word == "tomorrow" ? TimedPauseOption::untilTomorrow : TimedPauseOption::untilIResume;
}

void addPause(CommandTree& tree)
{
    auto pause = tree.verb("pause", "Pause recording");
    const auto& length = pause.argument("LENGTH", "How long", {"15m", "1h", "tomorrow", "until-resume"});
    pause.runs([&](Session& session) {
        const auto request = requestedPause(pauseOption(length), session.now(), session.calendar());
        auto preferences = session.preferences();
        PreferencesCapturePauseStore pauses(preferences);
        SessionBusInstance instance;
        orRefuse(pauseRecording(instance, pauses, request));
        printPause(session, request);
    });

    auto resume = tree.verb("resume", "Resume recording");
    resume.runs([](Session& session) {
        auto preferences = session.preferences();
        PreferencesCapturePauseStore pauses(preferences);
        SessionBusInstance instance;
        orRefuse(resumeRecording(instance, pauses));
        printResumed(session);
    });
}

} // namespace

void addRecordingCommands(CommandTree& tree)
{
    addRecord(tree);
    addReplay(tree);
    addStatus(tree);
    addPause(tree);
}

} // namespace stintbook
