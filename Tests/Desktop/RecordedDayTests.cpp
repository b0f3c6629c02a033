#include <csignal>
#include <functional>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <sys/wait.h>

#include "RecordingTest.h"
#include "Support/DesktopBrowsers.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {

namespace {

constexpr const char* firefox = "firefox-esr";
constexpr const char* chromium = "chromium";
constexpr const char* editor = "org.xfce.mousepad";
constexpr const char* terminal = "debian-xterm";

/// Seconds.
constexpr const char* idleThreshold = "8";

/// What capture must notice, and between which instants the desktop came to it.
struct Driven {
    std::string what;
    Instant from;
    Instant to;
};

std::string titled(const std::string& application, const std::string& title, const std::string& domain = "")
{
    return application + " “" + title + "”" + (domain.empty() ? "" : " " + domain);
}

/// A user at a desktop with two browsers, an editor and a terminal.
class RecordedDay : public RecordingTest {
protected:
    RecordedDay()
        : trace(desktop.home() / "trace.jsonl")
    {
        const auto preferences = desktop.home() / "config" / "velloran-development";
        std::filesystem::create_directories(preferences);
        writeFile(preferences / "preferences.toml", "[stintbook.capture]\nbrowserContext = true\n");

        const int port = servePages(desktop,
                                    {{"guide", "The guide"},
                                     {"inbox", "The inbox"},
                                     {"secret", "The secret"},
                                     {"board", "The board"},
                                     {"plan", "The plan"},
                                     {"riddle", "The riddle"}});
        const auto page = [&](const std::string& host, const std::string& name) {
            return "http://" + host + ".example.test:" + std::to_string(port) + "/" + name;
        };
        startFirefox(desktop, {page("docs", "guide"), page("mail", "inbox")});
        windows["firefox"] = windowWithTabs("The guide", "The inbox");
        startFirefox(desktop, {"--private-window", page("code", "secret")});
        windows["firefox, private"] = desktop.windowTitled("The secret");
        startChromium(desktop, {page("code", "board"), page("docs", "plan")});
        windows["chromium"] = windowWithTabs("The board", "The plan");
        startChromium(desktop, {"--incognito", page("mail", "riddle")});
        windows["chromium, incognito"] = desktop.windowTitled("The riddle");
        writeFile(desktop.home() / "letter.txt", "Dear all,\n");
        writeFile(desktop.home() / "minutes.txt", "Present: all\n");
        desktop.start({"mousepad", desktop.home() / "letter.txt"});
        windows["mousepad"] = desktop.windowTitled("letter.txt");
        startTerminal("~/velloran");
        windows["xterm"] = desktop.windowTitled("~/velloran");
        desktop.run({"xdotool", "mousemove", "1279", "899"});
    }

    /// Looks at both tabs, so that their pages are loaded, and leaves the first one in front.
    std::string windowWithTabs(const std::string& first, const std::string& second)
    {
        desktop.activate(desktop.windowTitled(first + "|" + second));
        showTab(1, first);
        showTab(2, second);
        showTab(1, first);
        const auto window = desktop.run({"xdotool", "getactivewindow"});
        return window.substr(0, window.find('\n'));
    }
    std::string showTab(int number, const std::string& title)
    {
        desktop.run({"xdotool", "key", "alt+" + std::to_string(number)});
        return frontTitled(title);
    }

    /// From now on the mouse moves a little again and again, as under a hand.
    void takeMouse()
    {
        m_hand = desktop.start({"sh", "-c",
                                "while :; do xdotool mousemove_relative -- -1 0; sleep 0.3;"
                                " xdotool mousemove_relative -- 1 0; sleep 0.3; done"});
    }
    /// With a last movement.
    void leaveMouse()
    {
        ::kill(-m_hand, SIGKILL);
        waitpid(m_hand, nullptr, 0);
        desktop.run({"xdotool", "mousemove_relative", "--", "-1", "0"});
    }

    /// Brings the desktop to what must be noticed, which `action` gives as a description of the segment, and
    /// waits until it is and until the trace tells of `traced`.
    void drive(const std::function<std::string()>& action, const std::string& traced = "")
    {
        const auto position = contentsOf(trace).size();
        const auto from = now();
        const auto what = action();
        m_driven.push_back({what, from, now()});
        EXPECT_TRUE(opensSegment(what.substr(0, what.find(' ')), from)) << what;
        EXPECT_TRUE(traces(traced, position)) << traced << " for " << what;
    }
    bool traces(const std::string& text, std::size_t behind = 0)
    {
        return PrivateDesktop::eventually(
            [&] { return contentsOf(trace).find(text, behind) != std::string::npos; });
    }

    void driveWindow(const std::string& window, const std::string& application,
                     const std::string& domain = "")
    {
        drive(
            [&] {
                desktop.activate(windows.at(window));
                return "work " + titled(application, frontTitle(), domain);
            },
            domain);
    }
    void drivePrivateWindow(const std::string& window, const std::string& application)
    {
        drive([&] {
            desktop.activate(windows.at(window));
            return "work " + application;
        });
    }
    void driveTab(int number, const std::string& title, const std::string& application,
                  const std::string& domain)
    {
        drive([&] { return "work " + titled(application, showTab(number, title), domain); }, domain);
    }
    void driveTerminalTitle(const std::string& title)
    {
        drive([&] {
            setTitle(title);
            return "work " + titled(terminal, frontTitled(title));
        });
    }
    void driveGap(const std::string& reason, const std::function<void()>& action)
    {
        drive([&] {
            action();
            return "gap " + reason;
        });
    }

    void expectDriven(const std::vector<StoredStretch>& stored)
    {
        std::vector<std::string> expected;
        for (const auto& driven : m_driven)
            expected.push_back(driven.what);
        ASSERT_THAT(whats(stored), testing::ElementsAreArray(expected));
        for (std::size_t n = 0; n < stored.size(); ++n) {
            EXPECT_GE(stored[n].start, m_driven[n].from) << stored[n].what;
            EXPECT_LE(stored[n].start, m_driven[n].to + Seconds{1}) << stored[n].what;
        }
        expectTouching(stored);
    }

    std::filesystem::path trace;
    std::map<std::string, std::string> windows;

private:
    pid_t m_hand = 0;
    std::vector<Driven> m_driven;
};

/// Segments as they are printed, on a line each, without what no two runs share.
std::string withoutIdentifiers(const std::string& segments)
{
    return std::regex_replace(segments, std::regex(R"("id": *"[^"]*")"), "\n");
}

} // namespace

TEST_F(RecordedDay, IsStoredAsItWasDrivenWithoutGapsAndReplaysFromItsTrace)
{
    takeMouse();
    Recorder recorder;
    drive([&] {
        recorder = record({"--trace", trace, "--idle-threshold", idleThreshold, "--idle-poll-interval", "2"});
        return "work " + titled(terminal, "~/velloran");
    });
    driveTerminalTitle("make test");
    driveWindow("mousepad", editor);
    drive([&] {
        desktop.start({"mousepad", desktop.home() / "minutes.txt"});
        return "work " + titled(editor, frontTitled("minutes.txt"));
    });
    driveWindow("firefox", firefox, "docs.example.test");
    driveTab(2, "The inbox", firefox, "mail.example.test");
    driveWindow("chromium", chromium, "code.example.test");
    driveTab(2, "The plan", chromium, "docs.example.test");
    drivePrivateWindow("chromium, incognito", chromium);
    drivePrivateWindow("firefox, private", firefox);
    driveWindow("firefox", firefox, "mail.example.test");

    drive([&] {
        const auto title = frontTitle();
        leaveMouse();
        return "idle " + titled(firefox, title, "mail.example.test");
    });
    drive([&] {
        desktop.run({"xdotool", "mousemove_relative", "--", "1", "0"});
        return "work " + titled(firefox, frontTitle(), "mail.example.test");
    });
    takeMouse();

    driveGap("sessionInactive", [&] { desktop.askToLock(true); });
    desktop.activate(windows.at("xterm"));
    driveGap("systemSleep", [&] { desktop.announceSleep(true); });
    driveGap("sessionInactive", [&] { desktop.announceSleep(false); });
    drive([&] {
        desktop.askToLock(false);
        return "work " + titled(terminal, "make test");
    });
    driveGap("capturePaused", [&] { cli({"--store", store, "pause", "until-resume"}); });
    drive([&] {
        cli({"--store", store, "resume"});
        return "work " + titled(terminal, "make test");
    });

    const auto asked = now();
    const auto ended = terminate(recorder);
    EXPECT_EQ(ended.exitStatus, 0) << log(recorder);
    EXPECT_LE(ended.took, Seconds{3});

    const auto stored = stretches(store);
    expectDriven(stored);
    ASSERT_FALSE(stored.empty());
    EXPECT_GE(stored.back().end, asked);

    const auto again = desktop.home() / "replayed";
    cli({"--store", again, "replay", "--idle-threshold", idleThreshold, trace});
    EXPECT_EQ(withoutIdentifiers(segments(again)), withoutIdentifiers(segments(store)));
}

} // namespace stintbook
