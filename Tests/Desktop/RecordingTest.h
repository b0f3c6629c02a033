#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "Base/Instant.h"
#include "Support/PrivateDesktop.h"

namespace stintbook {

/// A stretch as the store holds it.
struct StoredStretch {
    Instant start;
    Instant end;
    /// Everything but its time and identifier, as "work debian-xterm “A title” docs.example.test".
    std::string what;
};

/// `velloran-cli record` as a process of its own on a private desktop with session bus, accessibility and
/// logind, seen only through what it prints and stores.
class RecordingTest : public testing::Test {
protected:
    struct Recorder {
        pid_t process = 0;
        /// What it printed.
        std::filesystem::path output;
    };
    struct Ended {
        int exitStatus = 0;
        /// From being asked to end until it was gone.
        Seconds took;
    };

    enum class Display { x11, wayland };

    explicit RecordingTest(Display display = Display::x11);

    static Instant now();
    /// `velloran-cli` with these arguments, which must succeed; what it prints.
    std::string cli(PrivateDesktop::Command arguments);
    /// Starts `velloran-cli record` and does not wait for anything.
    Recorder launch(const PrivateDesktop::Command& arguments = {});
    /// The same, and waits until it observes.
    Recorder record(const PrivateDesktop::Command& arguments = {});
    /// Waits for the end of a process, and for SIGTERM sends that first.
    static Ended waitForEnd(const Recorder& recorder);
    static Ended terminate(const Recorder& recorder);
    /// What a recorder logged, to its standard error or to the journal.
    std::string log(const Recorder& recorder);

    /// `velloran-cli status`.
    rapidjson::Document status();
    /// Whether the recorder comes to have an open segment of this kind that began then or later.
    bool opensSegment(const std::string& kind, Instant notBefore);

    /// The segments of a store as `velloran-cli segments` prints them.
    std::string segments(const std::filesystem::path& ofStore);
    std::vector<StoredStretch> stretches(const std::filesystem::path& ofStore);

    /// A terminal in front whose title `setTitle` changes, as a program in it would.
    void startTerminal(const std::string& title);
    void setTitle(const std::string& title);
    std::string frontTitle();
    /// Waits until the front window's title contains the text, and gives the title.
    std::string frontTitled(const std::string& part);

    PrivateDesktop desktop;
    std::filesystem::path store;

private:
    std::filesystem::path m_titles;
    int m_launched = 0;
};

/// No second between the stretches is unaccounted for, and none is accounted for twice.
void expectTouching(const std::vector<StoredStretch>& stretches);
/// That of each stretch, in order.
std::vector<std::string> whats(const std::vector<StoredStretch>& stretches);

} // namespace stintbook
