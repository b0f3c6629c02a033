#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <systemd/sd-bus.h>

#include "Base/Instant.h"
#include "Platform/EventLoop.h"

namespace stintbook {

/// Why a bus or a call on it failed.
struct BusProblem {
    /// errno, positive: ENOENT for a bus that is not there, ETIMEDOUT for a call without an answer in time.
    int code = 0;
    /// The D-Bus error's name; empty when the failure is this side's.
    std::string name;
    std::string text;

    bool isTimeout() const;
    /// The service is not there and cannot be started: ordinary on many machines.
    bool isMissingService() const;
};

/// What a method call is sent to.
struct BusMethod {
    const char* destination = nullptr;
    const char* path = nullptr;
    const char* interface = nullptr;
    const char* member = nullptr;
    /// Whether the bus may start the destination for it.
    enum class Starting { whereItCan, never } starting = Starting::whereItCan;
};

/// A received message, read from front to back.
class BusMessage {
public:
    /// Takes over one reference.
    explicit BusMessage(sd_bus_message* message = nullptr)
        : m_message(message)
    {
    }
    static BusMessage borrowed(sd_bus_message* message) { return BusMessage(sd_bus_message_ref(message)); }

    sd_bus_message* get() const { return m_message.get(); }
    std::string sender() const;

    /// The next value, which has to be of that type; absent otherwise, and after the last.
    std::optional<std::string> readText();
    std::optional<bool> readBool();
    std::optional<std::int32_t> readInt32();
    std::optional<std::uint32_t> readUInt32();
    std::optional<std::uint64_t> readUInt64();
    std::optional<double> readDouble();
    std::optional<std::vector<std::string>> readTexts();

    /// Enters an array, struct, dictionary entry or variant of that content; false when it is none.
    bool enter(char type, const char* contents);
    void leave();
    /// Skips the next value, of whatever type.
    void skip();
    /// The signature inside a variant that stands next; empty when none does.
    std::string variantContents();

private:
    struct Unref {
        void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
    };
    std::unique_ptr<sd_bus_message, Unref> m_message;
};

template <typename T> using BusResult = std::expected<T, BusProblem>;

/// One connection to a message bus. Belongs to one thread.
///
/// Calls block, each with its own time-out. Signals and incoming calls arrive once the connection is
/// attached to a loop; there it waits without any timer of its own.
class BusConnection {
public:
    /// Ends a subscription or a published object with its own end. May outlive the connection.
    using Slot = std::shared_ptr<sd_bus_slot>;
    using Handler = std::function<void(BusMessage&)>;

    /// $DBUS_SESSION_BUS_ADDRESS, else the user's bus under $XDG_RUNTIME_DIR.
    static BusResult<std::unique_ptr<BusConnection>> session();
    /// $DBUS_SYSTEM_BUS_ADDRESS, else the machine's.
    static BusResult<std::unique_ptr<BusConnection>> system();
    static BusResult<std::unique_ptr<BusConnection>> at(const std::string& address);

    ~BusConnection();
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;

    /// Handles what arrives on the loop's thread until this or the loop ends; `onLoss` is called once when
    /// the bus goes away.
    void attach(EventLoop& loop, std::function<void()> onLoss = {});
    bool isOpen() const;
    sd_bus* get() const { return m_bus.get(); }

    /// Sends a call, with the arguments that `types` names as sd-bus does, and waits for its answer.
    template <typename... Arguments>
    BusResult<BusMessage> call(const BusMethod& method, Seconds timeout, const char* types,
                               Arguments... arguments)
    {
        auto message = compose(method);
        if (!message)
            return std::unexpected(std::move(message).error());
        if (int status = sd_bus_message_append(message->get(), types, arguments...); status < 0)
            return std::unexpected(problem(status));
        return send(*message, timeout);
    }
    BusResult<BusMessage> call(const BusMethod& method, Seconds timeout) { return call(method, timeout, ""); }

    /// A property's value, still inside its variant.
    BusResult<BusMessage> property(const char* destination, const char* path, const char* interface,
                                   const char* name, Seconds timeout);

    /// Calls `handler` for each signal that the match rule describes. Null when the bus refuses it.
    [[nodiscard]] Slot onSignal(const std::string& rule, Handler handler);

    static BusProblem problem(int negativeErrno, const sd_bus_error* error = nullptr);

private:
    struct Unref {
        void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
    };

    explicit BusConnection(sd_bus* bus)
        : m_bus(bus)
    {
    }
    static BusResult<std::unique_ptr<BusConnection>> opened(int status, sd_bus* bus);
    BusResult<BusMessage> compose(const BusMethod& method);
    BusResult<BusMessage> send(const BusMessage& message, Seconds timeout);
    void process();
    void processLater();

    std::unique_ptr<sd_bus, Unref> m_bus;
    EventLoop* m_loop = nullptr;
    std::unique_ptr<EventLoop::Watch> m_watch;
    /// A job that was posted must not meet a connection that is gone.
    std::shared_ptr<bool> m_life = std::make_shared<bool>(true);
    bool m_isProcessingDue = false;
    std::function<void()> m_onLoss;
};

} // namespace stintbook
