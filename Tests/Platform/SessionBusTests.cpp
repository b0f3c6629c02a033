#include <array>
#include <cstdlib>
#include <thread>
#include <tuple>

#include <sys/socket.h>
#include <sys/un.h>

#include "Base/FileDescriptor.h"
#include "DesktopTest.h"
#include "Platform/SessionBus.h"
#include "Platform/SessionBusInstance.h"
#include "Platform/SessionBusService.h"

namespace stintbook {

using namespace std::string_literals;

namespace {

class Answers final : public InstanceRequestHandling {
public:
    InstanceStatus status() override { return answer; }
    std::expected<void, std::string> pause(std::optional<Instant> until) override
    {
        answer.capture.runtime = CaptureRuntimeState::paused(until);
        return {};
    }
    std::expected<void, std::string> resume() override
    {
        answer.capture.runtime = CaptureRuntimeState::active();
        return {};
    }
    void deleteActivity(const ActivityDataScope& scope, Reply<DeletedActivity> reply,
                        DeletionProgress progress) override
    {
        deletions.push_back({scope, std::move(reply), std::move(progress)});
    }
    void flush(Reply<void> reply) override { flushes.push_back(std::move(reply)); }
    bool activate(ApplicationWindow window, const std::string& activationToken) override
    {
        ++activations;
        lastWindow = window;
        lastToken = activationToken;
        return hasWindow;
    }
    void quit() override { ++ends; }

    struct Deletion {
        ActivityDataScope scope;
        Reply<DeletedActivity> reply;
        DeletionProgress progress;
    };

    InstanceStatus answer{
        .capture = {CaptureRuntimeState::active(), CapturePermissionState::granted},
        .storeFile = "/home/me/Größe/store",
        .processIdentifier = 4711,
        .providers = {"frontmost: x11", "idle: xscreensaver"},
        .openSegment = InstanceStatus::OpenSegment{{1000.25}, "work", "Editor"},
        .unsavedSegmentCount = 3,
    };
    std::vector<Deletion> deletions;
    std::vector<Reply<void>> flushes;
    int activations = 0;
    ApplicationWindow lastWindow = ApplicationWindow::review;
    std::string lastToken;
    bool hasWindow = true;
    int ends = 0;
};

/// Sends a call and waits for nothing.
template <typename... Arguments>
void call(BusConnection& client, const char* interface, const char* member, const char* types,
          Arguments... arguments)
{
    ASSERT_GE(sd_bus_call_method_async(client.get(), nullptr, sessionbus::name, sessionbus::path, interface,
                                       member, nullptr, nullptr, types, arguments...),
              0);
    ASSERT_GE(sd_bus_flush(client.get()), 0);
}

/// A connection to the session bus that knows nothing of its language.
class BusSocket {
public:
    BusSocket()
    {
        const std::string address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
        const auto start = address.find("path=") + 5;
        sockaddr_un name{.sun_family = AF_UNIX, .sun_path = {}};
        address.substr(start, address.find(',') - start).copy(name.sun_path, sizeof name.sun_path - 1);
        EXPECT_EQ(connect(m_socket.get(), reinterpret_cast<sockaddr*>(&name), sizeof name), 0) << address;
    }
    void send(const std::string& bytes) const
    {
        std::ignore = ::send(m_socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    }

private:
    FileDescriptor m_socket{socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
};

class SessionBusTest : public DesktopTest {
protected:
    /// Asks from another thread, as another process does, while the loop answers.
    template <typename Question> auto answerTo(Question question)
    {
        decltype(question(instance)) answer;
        bool isAnswered = false;
        std::thread asking([&] {
            answer = question(instance);
            loop.post([&] { isAnswered = true; });
        });
        comesTrue([&] { return isAnswered; });
        asking.join();
        return answer;
    }

    /// The name of the error that comes back; empty for none.
    std::string errorOf(const char* interface, const char* member, const char* types, auto... arguments)
    {
        return answerTo([&](auto&) {
            const auto reply =
                (*BusConnection::session())
                    ->call({sessionbus::name, sessionbus::path, interface, member}, {5}, types, arguments...);
            return reply ? std::string() : reply.error().name;
        });
    }

    Answers answers;
    SessionBusInstance instance;
    SessionBusService service{loop};
};

} // namespace

TEST_F(SessionBusTest, CarriesStatusAndPauseWithTheirInstants)
{
    desktop.startSessionBus();
    ASSERT_TRUE(service.publish(answers));
    auto status = [&] { return answerTo([](auto& copy) { return copy.status(); }).value().value(); };
    auto first = status();
    EXPECT_EQ(std::tie(first.capture, first.storeFile, first.providers),
              std::tie(answers.answer.capture, answers.answer.storeFile, answers.answer.providers));
    EXPECT_EQ(first.openSegment->start, Instant{1000.25});
    answers.answer.openSegment.reset();
    for (const auto until : {std::optional(Instant{2000.5}), std::optional<Instant>()}) {
        EXPECT_TRUE(answerTo([&](auto& copy) { return copy.pause(until); }));
        const auto paused = status();
        EXPECT_EQ(paused.capture.runtime, CaptureRuntimeState::paused(until));
        EXPECT_FALSE(paused.openSegment);
    }
}

TEST_F(SessionBusTest, CarriesADeletionWithItsProgressAndItsSentence)
{
    desktop.startSessionBus();
    ASSERT_TRUE(service.publish(answers));
    const LocalDay day = *CalendarContext::inZone("Asia/Kolkata")->dayOn({2026, 11, 20});
    std::expected<DeletedActivity, std::string> outcome =
        DeletedActivity{.dayCount = 2, .remains = DeletedActivity::Remains::leftForTheNextStart};
    // What the test's answers do once they are asked.
    const auto answering = loop.every({0.01}, [&] {
        if (answers.deletions.empty() || !answers.deletions.back().reply)
            return;
        for (const double part : {0.25, 0.2501, 0.5})
            DeletionProgress(answers.deletions.back().progress)(part);
        std::exchange(answers.deletions.back().reply, {})(outcome);
    });
    for (const auto& scope : {ActivityDataScope(*LocalDayRange::between(day, day)),
                              ActivityDataScope(DaysBefore{day}), ActivityDataScope(AllHistory{})}) {
        std::vector<double> told;
        EXPECT_EQ(answerTo([&](auto& copy) {
                      return copy.deleteActivity(scope, [&](double part) { told.push_back(part); });
                  }),
                  outcome);
        EXPECT_EQ(answers.deletions.back().scope, scope);
        EXPECT_EQ(told, (std::vector{0.25, 0.5}));
    }
    outcome = std::unexpected("Nothing was deleted.");
    EXPECT_EQ(answerTo([](auto& copy) { return copy.deleteActivity(AllHistory{}, {}); }), outcome);
}

TEST_F(SessionBusTest, FlushesAndDeletesOneAfterTheOtherAlsoForAClientThatIsGone)
{
    desktop.startSessionBus();
    ASSERT_TRUE(service.publish(answers));
    auto client = *BusConnection::session();
    call(*client, sessionbus::interface, "DeleteActivity", "sss", "allHistory", "", "");
    call(*client, sessionbus::interface, "Flush", "");
    ASSERT_TRUE(comesTrue([&] { return answers.deletions.size() == 1; }));
    client.reset();
    EXPECT_TRUE(answers.flushes.empty());
    answers.deletions[0].reply(DeletedActivity{});
    EXPECT_TRUE(comesTrue([&] { return answers.flushes.size() == 1; }));
    answers.flushes[0]({});

    auto turn = loop.every({0.01}, [&] {
        if (answers.flushes.size() == 2 && answers.flushes[1])
            std::exchange(answers.flushes[1], {})(std::unexpected("The store is busy."));
    });
    EXPECT_EQ(answerTo([](auto& copy) { return copy.flush(); }).error(), "The store is busy.");
}

TEST_F(SessionBusTest, TellsOfANewStatusAndDoesWhatADesktopAsksFor)
{
    desktop.startSessionBus();
    ASSERT_TRUE(service.publish(answers));
    auto client = *BusConnection::session();
    std::string phase;
    const auto subscription =
        client->onSignal("type='signal',member='StatusChanged'", [&](BusMessage& signal) {
            ASSERT_TRUE(signal.enter('a', "{sv}"));
            ASSERT_TRUE(signal.enter('e', "sv"));
            EXPECT_EQ(signal.readText(), "phase");
            ASSERT_TRUE(signal.enter('v', "s"));
            phase = signal.readText().value_or("");
        });
    client->attach(loop);
    answers.resume();
    service.announceStatus();
    EXPECT_TRUE(comesTrue([&] { return phase == "active"; }));

    const auto asked = [&](const char* member, const char* types, auto... arguments) {
        return errorOf(sessionbus::applicationInterface, member, types, arguments...);
    };
    const auto action = [&](const char* name) { return asked("ActivateAction", "sava{sv}", name, 0, 0); };
    EXPECT_EQ(action("pause"), "");
    EXPECT_EQ(answers.answer.capture.runtime, CaptureRuntimeState::paused(std::nullopt));
    EXPECT_EQ(action("resume"), "");
    EXPECT_TRUE(answers.answer.capture.runtime.isActive());
    EXPECT_EQ(action("quit"), "");
    EXPECT_EQ(answers.ends, 1);
    EXPECT_EQ(action("format-the-disk"), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(asked("Open", "asa{sv}", 0, 0), "");
    EXPECT_EQ(action("settings"), "");
    EXPECT_EQ(answers.lastWindow, ApplicationWindow::settings);
    EXPECT_EQ(action("review"), "");
    EXPECT_EQ(answers.lastWindow, ApplicationWindow::review);
    EXPECT_EQ(asked("Activate", "a{sv}", 2, "desktop-startup-id", "s", "7", "activation-token", "s", "leave"),
              "");
    EXPECT_EQ(answers.lastToken, "leave");
    EXPECT_EQ(answers.activations, 4);
    answers.hasWindow = false;
    EXPECT_EQ(action("review"), SD_BUS_ERROR_FAILED);
    EXPECT_EQ(asked("Open", "asa{sv}", 1, "file:///etc/passwd", 0), SD_BUS_ERROR_NOT_SUPPORTED);
}

TEST_F(SessionBusTest, GoesOnWhateverAClientSends)
{
    desktop.startSessionBus();
    ASSERT_TRUE(service.publish(answers));
    int turns = 0;
    const auto capture = loop.every({0.01}, [&] { ++turns; });

    // No bus message at all, and half of one.
    const std::string hello = "\0AUTH EXTERNAL\r\nDATA\r\nBEGIN\r\n"s;
    const BusSocket garbage;
    garbage.send("\0\xff\xfe garbage"s + std::string(100'000, '\x80'));
    const BusSocket half;
    half.send(hello + "l\1\0\1\4\0\0\0"s);

    EXPECT_EQ(errorOf(sessionbus::interface, "DeleteActivity", "i", 7), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(errorOf(sessionbus::interface, "Pause", "s", "tomorrow"), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(errorOf(sessionbus::interface, "Erase", ""), SD_BUS_ERROR_UNKNOWN_METHOD);
    for (const auto& [scope, from, through] :
         {std::array{"everything", "", ""}, std::array{"allHistory", "2026-11-20@Europe/Berlin", ""},
          std::array{"localDays", "2026-11-20@Europe/Berlin", "2026-11-19@Europe/Berlin"},
          std::array{"localDays", "2026-11-20", "2026-11-20"},
          std::array{"before", "2026-02-30@Europe/Berlin", ""}})
        EXPECT_EQ(errorOf(sessionbus::interface, "DeleteActivity", "sss", scope, from, through),
                  SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_TRUE(answers.deletions.empty());

    // Far more calls than anybody answers in the time, whose sender reads no reply; most of them hold the writer.
    {
        auto flood = *BusConnection::session();
        for (int round = 0; round < 3000; ++round) {
            call(*flood, sessionbus::interface, "Status", "");
            call(*flood, sessionbus::interface, "Flush", "");
        }
        const auto before = turns;
        EXPECT_TRUE(comesTrue([&] { return turns > before + 20; }, {2}));
    }
    EXPECT_EQ(answers.flushes.size(), 1U);
    EXPECT_TRUE(answerTo([](auto& copy) { return copy.status(); }));
    EXPECT_TRUE(answers.deletions.empty());
}

TEST_F(SessionBusTest, PublishesTheFirstCopyAloneAndSaysThatNobodyIsThere)
{
    EXPECT_FALSE(service.publish(answers));
    EXPECT_EQ(instance.status().value(), std::nullopt);
    desktop.startSessionBus();
    EXPECT_EQ(instance.status().value(), std::nullopt);
    EXPECT_EQ(instance.resume().error(), "Velloran is not running.");

    ASSERT_TRUE(service.publish(answers));
    SessionBusService second(loop);
    EXPECT_FALSE(second.publish(answers));
    EXPECT_EQ(answerTo([](auto& copy) { return copy.status(); }).value()->processIdentifier, 4711);
}

} // namespace stintbook
