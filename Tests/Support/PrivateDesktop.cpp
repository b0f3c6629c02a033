#include "Support/PrivateDesktop.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <thread>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Support/TemporaryDirectory.h"

namespace stintbook {

namespace fs = std::filesystem;

namespace {

constexpr const char* sessionPath = "/org/freedesktop/login1/session/s1";

[[noreturn]] void fail(const std::string& sentence)
{
    throw std::runtime_error(sentence);
}

std::string joined(const PrivateDesktop::Command& command)
{
    std::string text;
    for (const auto& word : command)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

/// The processes that came from a desktop with this home: its path stands in their environment, whoever
/// their parent is by now.
std::vector<pid_t> processesOf(const std::string& home)
{
    std::vector<pid_t> found;
    std::error_code error;
    for (const auto& item : fs::directory_iterator("/proc", error)) {
        auto process = std::atoi(item.path().filename().c_str());
        if (process > 0 && process != getpid()
            && contentsOf(item.path() / "environ").contains("HOME=" + home))
            found.push_back(process);
    }
    return found;
}

} // namespace

PrivateDesktop::PrivateDesktop()
{
    auto pattern = (fs::temp_directory_path() / "velloran-desktop-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        fail("No temporary directory could be made.");
    m_home = pattern;
    auto directory = [&](const char* name) {
        auto path = m_home / name;
        fs::create_directories(path);
        fs::permissions(path, fs::perms::owner_all);
        return path.string();
    };
    setEnvironment("HOME", m_home);
    setEnvironment("XDG_CONFIG_HOME", directory("config"));
    setEnvironment("XDG_DATA_HOME", directory("data"));
    setEnvironment("XDG_CACHE_HOME", directory("cache"));
    setEnvironment("XDG_STATE_HOME", directory("state"));
    setEnvironment("XDG_RUNTIME_DIR", directory("runtime"));
    setEnvironment("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    setEnvironment("GSETTINGS_BACKEND", "memory");
    setEnvironment("LC_ALL", "C.UTF-8");
    setEnvironment("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + (m_home / "no-system-bus").string());
    for (const char* name :
         {"DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY", "DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS",
          "XDG_SESSION_ID", "XDG_SESSION_TYPE", "XDG_CURRENT_DESKTOP", "NO_AT_BRIDGE", "SWAYSOCK"})
        unsetEnvironment(name);
}

PrivateDesktop::~PrivateDesktop()
{
    killEverything();
    for (const auto& [name, value] : m_formerEnvironment) {
        if (value)
            setenv(name.c_str(), value->c_str(), 1);
        else
            unsetenv(name.c_str());
    }
    std::error_code error;
    fs::remove_all(m_home, error);
}

void PrivateDesktop::killEverything()
{
    eventually([this] {
        auto left = processesOf(m_home);
        for (auto process : left)
            ::kill(process, SIGKILL);
        while (waitpid(-1, nullptr, WNOHANG) > 0) { }
        return left.empty();
    });
}

void PrivateDesktop::startDisplay()
{
    const auto number =
        startAndReadLine("Xvfb -displayfd 3 -screen 0 1280x900x24 -nolisten tcp -noreset", m_display);
    setEnvironment("DISPLAY", ":" + number);
    start({"openbox"});
    if (!eventually([this] {
            auto answer = tryRun({"xprop", "-root", "_NET_SUPPORTING_WM_CHECK"});
            return answer && answer->find("window id") != answer->npos;
        }))
        fail("The window manager did not start.");
}

void PrivateDesktop::killDisplay()
{
    kill(m_display);
}

void PrivateDesktop::startCompositor()
{
    auto runtime = fs::path(std::getenv("XDG_RUNTIME_DIR"));
    std::ofstream(m_home / "sway.conf") << "xwayland disable\nfocus_on_window_activation focus\n"
                                        << "output * bg #000000 solid_color\n";
    setEnvironment("WLR_BACKENDS", "headless");
    setEnvironment("WLR_LIBINPUT_NO_DEVICES", "1");
    setEnvironment("WLR_RENDERER", "pixman");
    Command command{"sway", "--config", m_home / "sway.conf"};
    // It refuses to run for the superuser: then it runs as nobody, who owns the desktop's directories.
    if (getuid() == 0) {
        constexpr uid_t nobody = 65534;
        for (const auto& item : fs::recursive_directory_iterator(m_home))
            chown(item.path().c_str(), nobody, nobody);
        chown(m_home.c_str(), nobody, nobody);
        Command asNobody{"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
        command.insert(command.begin(), asNobody.begin(), asNobody.end());
    }
    start(command);
    auto socket = [&](const std::string& prefix) -> std::string {
        for (const auto& item : fs::directory_iterator(runtime)) {
            auto name = item.path().filename().string();
            if (name.starts_with(prefix) && !name.ends_with(".lock"))
                return name;
        }
        return {};
    };
    if (!eventually([&] { return !socket("wayland-").empty() && !socket("sway-ipc.").empty(); }))
        fail("The compositor did not start.");
    setEnvironment("WAYLAND_DISPLAY", socket("wayland-"));
    setEnvironment("SWAYSOCK", runtime / socket("sway-ipc."));
    start({"wtype", "-s", "600000", "a"});
}

void PrivateDesktop::startSessionBus()
{
    setEnvironment("DBUS_SESSION_BUS_ADDRESS", startBus());
}

std::string PrivateDesktop::startBus()
{
    pid_t process = 0;
    return startAndReadLine("dbus-daemon --session --nofork --nopidfile --print-address=3", process);
}

void PrivateDesktop::startAccessibility()
{
    run({"gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path", "/org/a11y/bus", "--method",
         "org.freedesktop.DBus.Properties.Set", "org.a11y.Status", "IsEnabled", "<true>"});
}

void PrivateDesktop::startSystemBus()
{
    setEnvironment("DBUS_SYSTEM_BUS_ADDRESS", startBus());
}

void PrivateDesktop::startLogind()
{
    startSystemBus();
    setEnvironment("XDG_SESSION_ID", "s1");
    // The module of the distribution, whatever Python comes first elsewhere.
    start({"/usr/bin/python3", "-m", "dbusmock", "--system", "--template", "logind"});
    auto ping = [this] {
        return tryRun({"gdbus", "call", "--system", "--dest", "org.freedesktop.login1", "--object-path",
                       "/org/freedesktop/login1", "--method", "org.freedesktop.login1.Manager.ListSessions"})
            .has_value();
    };
    if (!eventually(ping))
        fail("The mock of logind did not start.");
    callLogind("/org/freedesktop/login1", "org.freedesktop.DBus.Mock.AddSession",
               {"s1", "seat0", std::to_string(getuid()), "tester", "true"});
}

std::string PrivateDesktop::callLogind(const std::string& path, const std::string& method,
                                       const std::vector<std::string>& arguments)
{
    Command command{"gdbus",         "call", "--system", "--dest", "org.freedesktop.login1",
                    "--object-path", path,   "--method", method};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return run(command);
}

void PrivateDesktop::announceSleep(bool isAboutToSleep)
{
    callLogind("/org/freedesktop/login1", "org.freedesktop.DBus.Mock.EmitSignal",
               {"org.freedesktop.login1.Manager", "PrepareForSleep", "b",
                isAboutToSleep ? "[<true>]" : "[<false>]"});
}

void PrivateDesktop::askToLock(bool isLocked)
{
    callLogind(sessionPath,
               isLocked ? "org.freedesktop.login1.Session.Lock" : "org.freedesktop.login1.Session.Unlock",
               {});
}

void PrivateDesktop::setSessionFlag(const std::string& name, bool value)
{
    callLogind(sessionPath, "org.freedesktop.DBus.Mock.UpdateProperties",
               {"org.freedesktop.login1.Session", "{'" + name + "': <" + (value ? "true" : "false") + ">}"});
}

int PrivateDesktop::sleepInhibitorCount()
{
    auto list = callLogind("/org/freedesktop/login1", "org.freedesktop.login1.Manager.ListInhibitors", {});
    int count = 0;
    for (auto at = list.find("'sleep'"); at != list.npos; at = list.find("'sleep'", at + 1))
        ++count;
    return count;
}

std::string PrivateDesktop::startAndReadLine(const std::string& command, pid_t& process)
{
    const auto file = m_home / ("line-" + std::to_string(++m_started));
    process = start({"sh", "-c", "exec " + command + R"( 3>"$0")", file});
    if (!eventually([&] { return contentsOf(file).ends_with('\n'); }))
        fail("This did not start: " + command);
    auto line = contentsOf(file);
    line.pop_back();
    return line;
}

pid_t PrivateDesktop::start(const Command& command)
{
    return start(command, m_home / ("program-" + std::to_string(++m_started) + ".log"));
}

pid_t PrivateDesktop::start(const Command& command, const fs::path& outputFile)
{
    std::vector<char*> words;
    for (const auto& word : command)
        words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    const auto parent = getpid();
    const pid_t process = fork();
    if (process < 0)
        fail("No process could be started.");
    if (process > 0)
        return process;
    // Only calls that are safe between fork and exec.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(127);
    setpgid(0, 0);
    const int output = open(outputFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    execvp(words.front(), words.data());
    _exit(127);
}

void PrivateDesktop::kill(pid_t process)
{
    ::kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
}

std::optional<std::string> PrivateDesktop::tryRun(const Command& command)
{
    const auto outputFile = m_home / "answer.log";
    const auto process = start(command, outputFile);
    int status = 0;
    if (!eventually([&] { return waitpid(process, &status, WNOHANG) == process; }, {10})) {
        kill(process);
        return std::nullopt;
    }
    return status == 0 ? std::optional(contentsOf(outputFile)) : std::nullopt;
}

std::string PrivateDesktop::run(const Command& command)
{
    if (auto text = tryRun(command))
        return *text;
    fail("This failed: " + joined(command));
}

std::string PrivateDesktop::windowTitled(const std::string& part)
{
    std::string found;
    bool isThere = eventually(
        [&] {
            auto answer = tryRun({"xdotool", "search", "--onlyvisible", "--name", part});
            found = answer ? answer->substr(0, answer->find('\n')) : "";
            return !found.empty();
        },
        {60});
    if (!isThere)
        fail("No window is titled like " + part);
    return found;
}

void PrivateDesktop::activate(const std::string& window)
{
    run({"xdotool", "windowactivate", "--sync", window});
}

void PrivateDesktop::remember(const std::string& name)
{
    const char* former = std::getenv(name.c_str());
    m_formerEnvironment.try_emplace(name, former ? std::optional<std::string>(former) : std::nullopt);
}

void PrivateDesktop::setEnvironment(const std::string& name, const std::string& value)
{
    remember(name);
    setenv(name.c_str(), value.c_str(), 1);
}

void PrivateDesktop::unsetEnvironment(const std::string& name)
{
    remember(name);
    unsetenv(name.c_str());
}

bool PrivateDesktop::eventually(const std::function<bool()>& condition, Seconds limit)
{
    auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(limit.value);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
}

} // namespace stintbook
