#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

#include "Base/Instant.h"

namespace stintbook {

/// A desktop of the test's own: display, window manager, session bus, accessibility, a mock of logind, and
/// whatever programs the test starts in it. Nothing of the machine's own desktop is seen or changed.
///
/// Its environment variables are this process's while it lives, so that code under test meets it as any
/// desktop. One at a time. What it needs and does not find fails the test that asked for it, by an exception
/// with a sentence. At its end every program that came from it is killed.
class PrivateDesktop {
public:
    using Command = std::vector<std::string>;

    /// Empty home and runtime directories; no display and no bus yet.
    PrivateDesktop();
    ~PrivateDesktop();
    PrivateDesktop(const PrivateDesktop&) = delete;
    PrivateDesktop& operator=(const PrivateDesktop&) = delete;

    /// An X server with a window manager.
    void startDisplay();
    /// Ends the X server, as a crash would.
    void killDisplay();
    /// A Wayland compositor without screens or devices of the machine, and a keyboard, without which
    /// programs take no focus.
    void startCompositor();
    void startSessionBus();
    /// Switches accessibility on; needs the session bus. Programs started later take part.
    void startAccessibility();
    void startSystemBus();
    /// A system bus with a mock logind that has one session of this user, active and unlocked.
    void startLogind();
    /// What logind does: announces that the machine is about to sleep, or that it woke up.
    void announceSleep(bool isAboutToSleep);
    /// "Lock" or "Unlock" of the session, as a desktop asks for it.
    void askToLock(bool isLocked);
    /// A property of the session: "LockedHint", "Active", "IdleHint".
    void setSessionFlag(const std::string& name, bool value);
    /// How many programs delay the machine's sleep.
    int sleepInhibitorCount();

    /// Starts a program; what it prints goes to a file in the home directory.
    pid_t start(const Command& command);
    /// Kills a program that `start` gave, and waits for its end.
    void kill(pid_t process);
    /// Runs a command to its end, at most for ten seconds, and gives what it printed; absent when it failed.
    std::optional<std::string> tryRun(const Command& command);
    /// The same for a command that has to succeed.
    std::string run(const Command& command);

    /// The number of a visible window whose title contains the text, once there is one.
    std::string windowTitled(const std::string& part);
    /// Brings a window to the front, as its user would by the window manager.
    void activate(const std::string& window);

    const std::filesystem::path& home() const { return m_home; }
    void setEnvironment(const std::string& name, const std::string& value);
    void unsetEnvironment(const std::string& name);

    /// Looks again and again until the condition holds, at most for `limit`; whether it does.
    static bool eventually(const std::function<bool()>& condition, Seconds limit = {20});

private:
    pid_t start(const Command& command, const std::filesystem::path& outputFile);
    /// Starts a program that writes a line to its descriptor 3, and gives that line.
    std::string startAndReadLine(const std::string& command, pid_t& process);
    std::string startBus();
    std::string callLogind(const std::string& path, const std::string& method,
                           const std::vector<std::string>& arguments);
    void remember(const std::string& name);
    void killEverything();

    std::filesystem::path m_home;
    /// What the variables were before.
    std::map<std::string, std::optional<std::string>> m_formerEnvironment;
    pid_t m_display = 0;
    int m_started = 0;
};

} // namespace stintbook
