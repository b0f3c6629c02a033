#include "RecordingTest.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <stdexcept>

#include <fmt/format.h>
#include <sys/wait.h>

#include "Base/TimeSource.h"
#include "Support/ParsedJson.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {

namespace fs = std::filesystem;

namespace {

/// A zone in which it is about noon, so that no midnight cuts what a test records.
std::string zoneFarFromMidnight()
{
    const auto hour = (std::time(nullptr) / 3600) % 24;
    // The sign of these names is that of the way to Greenwich.
    return fmt::format("Etc/GMT{:+}", hour - 12);
}

std::string memberText(const rapidjson::Value& object, const char* key)
{
    const auto found = object.FindMember(key);
    return found == object.MemberEnd() ? std::string() : found->value.GetString();
}

std::string description(const rapidjson::Value& segment)
{
    auto text = memberText(segment, "kind");
    const auto add = [&](const std::string& part) { text += part.empty() ? "" : " " + part; };
    add(memberText(segment, "gapReason"));
    if (segment.HasMember("application"))
        add(memberText(segment["application"], "bundleIdentifier"));
    if (segment["context"].HasMember("text"))
        add("“" + memberText(segment["context"], "text") + "”");
    add(memberText(segment, "browserDomain"));
    // Said only where it is not what follows from the rest.
    const auto evidence = memberText(segment, "evidence");
    const auto* usual = segment.HasMember("gapReason") ? "none"
        : segment["context"].HasMember("text")         ? "applicationAndWindow"
                                                       : "applicationOnly";
    if (evidence != usual)
        add(evidence);
    return text;
}

} // namespace

RecordingTest::RecordingTest(Display display)
{
    desktop.setEnvironment("TZ", zoneFarFromMidnight());
    if (display == Display::x11)
        desktop.startDisplay();
    desktop.startSessionBus();
    if (display == Display::wayland)
        desktop.startCompositor();
    desktop.startAccessibility();
    desktop.startLogind();
    store = desktop.home() / "store";
    m_titles = desktop.home() / "titles";
}

Instant RecordingTest::now()
{
    return SystemTimeSource().now();
}

std::string RecordingTest::cli(PrivateDesktop::Command arguments)
{
    arguments.insert(arguments.begin(), std::getenv("VELLORAN_CLI"));
    return desktop.run(arguments);
}

RecordingTest::Recorder RecordingTest::launch(const PrivateDesktop::Command& arguments)
{
    Recorder recorder{.output = desktop.home() / fmt::format("recorder-{}.log", ++m_launched)};
    PrivateDesktop::Command command{
        "sh",  "-c",    "exec \"$@\" >\"$0\" 2>&1", recorder.output, std::getenv("VELLORAN_CLI"), "--store",
        store, "record"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    recorder.process = desktop.start(command);
    return recorder;
}

RecordingTest::Recorder RecordingTest::record(const PrivateDesktop::Command& arguments)
{
    auto recorder = launch(arguments);
    const auto observes = [&] {
        const auto seen = status();
        return seen.HasMember("openSegment") && seen["processIdentifier"].GetInt() == recorder.process
            && memberText(seen, "permission") == "granted";
    };
    if (!PrivateDesktop::eventually(observes))
        throw std::runtime_error("The recorder observes nothing: " + contentsOf(recorder.output));
    return recorder;
}

RecordingTest::Ended RecordingTest::waitForEnd(const Recorder& recorder)
{
    const auto begin = std::chrono::steady_clock::now();
    int result = 0;
    if (!PrivateDesktop::eventually([&] { return waitpid(recorder.process, &result, WNOHANG) != 0; }))
        throw std::runtime_error("The recorder does not end: " + contentsOf(recorder.output));
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    return {.exitStatus = WIFEXITED(result) ? WEXITSTATUS(result) : -1, .took = {took.count()}};
}

RecordingTest::Ended RecordingTest::terminate(const Recorder& recorder)
{
    ::kill(recorder.process, SIGTERM);
    return waitForEnd(recorder);
}

std::string RecordingTest::log(const Recorder& recorder)
{
    auto journal =
        desktop.tryRun({"journalctl", "--quiet", "--output=cat", "_PID=" + std::to_string(recorder.process)});
    return contentsOf(recorder.output) + journal.value_or("");
}

rapidjson::Document RecordingTest::status()
{
    return parsedJson(cli({"--store", store, "status", "--json"}));
}

bool RecordingTest::opensSegment(const std::string& kind, Instant notBefore)
{
    return PrivateDesktop::eventually([&] {
        const auto seen = status();
        const auto open = seen.FindMember("openSegment");
        return open != seen.MemberEnd() && memberText(open->value, "kind") == kind
            && open->value["start"].GetDouble() >= notBefore.secondsSinceEpoch;
    });
}

std::string RecordingTest::segments(const fs::path& ofStore)
{
    return cli({"--store", ofStore, "segments", "yesterday", "--to", "today", "--json"});
}

std::vector<StoredStretch> RecordingTest::stretches(const fs::path& ofStore)
{
    std::vector<StoredStretch> all;
    const auto document = parsedJson(segments(ofStore));
    for (const auto& segment : document["segments"].GetArray()) {
        all.push_back({.start = {segment["start"].GetDouble()},
                       .end = {segment["end"].GetDouble()},
                       .what = description(segment)});
    }
    return all;
}

void RecordingTest::startTerminal(const std::string& title)
{
    desktop.run({"mkfifo", m_titles});
    desktop.start({"xterm", "-title", title, "-e", "sh", "-c",
                   "while :; do printf '\\033]2;%s\\007' \"$(cat '" + m_titles.string() + "')\"; done"});
    desktop.activate(desktop.windowTitled(title));
}

void RecordingTest::setTitle(const std::string& title)
{
    desktop.run({"sh", "-c", "printf %s \"$0\" >'" + m_titles.string() + "'", title});
}

std::string RecordingTest::frontTitle()
{
    auto title = desktop.tryRun({"xdotool", "getactivewindow", "getwindowname"}).value_or("");
    return title.substr(0, title.find('\n'));
}

std::string RecordingTest::frontTitled(const std::string& part)
{
    std::string title;
    const auto isInFront = [&] {
        title = frontTitle();
        return title.find(part) != title.npos;
    };
    if (!PrivateDesktop::eventually(isInFront, {60}))
        throw std::runtime_error(fmt::format("In front is “{}” instead of “{}”", title, part));
    return title;
}

void expectTouching(const std::vector<StoredStretch>& stretches)
{
    for (std::size_t next = 1; next < stretches.size(); ++next) {
        EXPECT_EQ(stretches[next].start, stretches[next - 1].end)
            << "between " << stretches[next - 1].what << " and " << stretches[next].what;
    }
}

std::vector<std::string> whats(const std::vector<StoredStretch>& stretches)
{
    std::vector<std::string> texts;
    for (const auto& stretch : stretches)
        texts.push_back(stretch.what);
    return texts;
}

} // namespace stintbook
