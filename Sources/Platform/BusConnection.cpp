#include "Platform/BusConnection.h"

#include <cerrno>
#include <cstring>

namespace stintbook {

namespace {

/// So many messages are handled before something else has its turn.
constexpr int mostAtOnce = 64;

} // namespace

bool BusProblem::isTimeout() const
{
    return code == ETIMEDOUT || name == SD_BUS_ERROR_NO_REPLY || name == SD_BUS_ERROR_TIMEOUT;
}

bool BusProblem::isMissingService() const
{
    return name == SD_BUS_ERROR_SERVICE_UNKNOWN || name == SD_BUS_ERROR_NAME_HAS_NO_OWNER
        || name.starts_with("org.freedesktop.DBus.Error.Spawn.");
}

std::string BusMessage::sender() const
{
    const char* name = sd_bus_message_get_sender(get());
    return name ? name : "";
}

namespace {

template <typename Value> std::optional<Value> readBasic(sd_bus_message* message, char type)
{
    Value value{};
    if (sd_bus_message_read_basic(message, type, &value) <= 0)
        return std::nullopt;
    return value;
}

} // namespace

std::optional<std::string> BusMessage::readText()
{
    char type = 0;
    if (sd_bus_message_peek_type(get(), &type, nullptr) <= 0 || (type != 's' && type != 'o' && type != 'g'))
        return std::nullopt;
    return readBasic<const char*>(get(), type);
}

std::optional<bool> BusMessage::readBool()
{
    auto value = readBasic<int>(get(), 'b');
    return value ? std::optional(*value != 0) : std::nullopt;
}

std::optional<std::int32_t> BusMessage::readInt32()
{
    return readBasic<std::int32_t>(get(), 'i');
}

std::optional<std::uint32_t> BusMessage::readUInt32()
{
    return readBasic<std::uint32_t>(get(), 'u');
}

std::optional<std::uint64_t> BusMessage::readUInt64()
{
    return readBasic<std::uint64_t>(get(), 't');
}

std::optional<double> BusMessage::readDouble()
{
    return readBasic<double>(get(), 'd');
}

std::optional<std::vector<std::string>> BusMessage::readTexts()
{
    if (!enter('a', "s"))
        return std::nullopt;
    std::vector<std::string> texts;
    while (auto text = readText())
        texts.push_back(std::move(*text));
    leave();
    return texts;
}

bool BusMessage::enter(char type, const char* contents)
{
    return sd_bus_message_enter_container(get(), type, contents) > 0;
}

void BusMessage::leave()
{
    sd_bus_message_exit_container(get());
}

void BusMessage::skip()
{
    sd_bus_message_skip(get(), nullptr);
}

std::string BusMessage::variantContents()
{
    char type = 0;
    const char* contents = nullptr;
    if (sd_bus_message_peek_type(get(), &type, &contents) <= 0 || type != 'v')
        return {};
    return contents;
}

BusProblem BusConnection::problem(int negativeErrno, const sd_bus_error* error)
{
    BusProblem problem{.code = -negativeErrno};
    if (error && sd_bus_error_is_set(error)) {
        problem.name = error->name;
        problem.text = error->message ? error->message : error->name;
    } else {
        problem.text = std::strerror(problem.code);
    }
    return problem;
}

BusResult<std::unique_ptr<BusConnection>> BusConnection::opened(int status, sd_bus* bus)
{
    if (status < 0)
        return std::unexpected(problem(status));
    return std::unique_ptr<BusConnection>(new BusConnection(bus));
}

BusResult<std::unique_ptr<BusConnection>> BusConnection::session()
{
    sd_bus* bus = nullptr;
    int status = sd_bus_open_user(&bus);
    return opened(status, bus);
}

BusResult<std::unique_ptr<BusConnection>> BusConnection::system()
{
    sd_bus* bus = nullptr;
    int status = sd_bus_open_system(&bus);
    return opened(status, bus);
}

BusResult<std::unique_ptr<BusConnection>> BusConnection::at(const std::string& address)
{
    sd_bus* bus = nullptr;
    int status = sd_bus_new(&bus);
    if (status < 0)
        return std::unexpected(problem(status));
    auto connection = opened(status, bus);
    status = sd_bus_set_address(bus, address.c_str());
    if (status >= 0)
        status = sd_bus_set_bus_client(bus, 1);
    if (status >= 0)
        status = sd_bus_start(bus);
    if (status < 0)
        return std::unexpected(problem(status));
    return connection;
}

BusConnection::~BusConnection() = default;

bool BusConnection::isOpen() const
{
    return sd_bus_is_open(m_bus.get()) > 0;
}

void BusConnection::attach(EventLoop& loop, std::function<void()> onLoss)
{
    m_loop = &loop;
    m_onLoss = std::move(onLoss);
    m_watch = loop.watch(sd_bus_get_fd(m_bus.get()), EventLoop::Readiness::readable, [this] { process(); });
    process();
}

/// Handles what has arrived, and sees to it that nothing waits in a buffer while the loop sleeps. Whoever sends
/// without pause does not keep the loop from everything else.
void BusConnection::process()
{
    m_isProcessingDue = false;
    std::weak_ptr<bool> life = m_life;
    int status = 1;
    for (int handled = 0; status > 0 && handled < mostAtOnce; ++handled) {
        status = sd_bus_process(m_bus.get(), nullptr);
        if (life.expired())
            return;
    }
    if (status >= 0 && isOpen()) {
        if (status > 0)
            processLater();
        return;
    }
    m_watch.reset();
    if (auto onLoss = std::exchange(m_onLoss, {}))
        onLoss();
}

void BusConnection::processLater()
{
    if (std::exchange(m_isProcessingDue, true))
        return;
    m_loop->post([this, life = std::weak_ptr(m_life)] {
        if (!life.expired())
            process();
    });
}

BusResult<BusMessage> BusConnection::compose(const BusMethod& method)
{
    sd_bus_message* message = nullptr;
    int status = sd_bus_message_new_method_call(m_bus.get(), &message, method.destination, method.path,
                                                method.interface, method.member);
    if (status < 0)
        return std::unexpected(problem(status));
    BusMessage composed(message);
    if (method.starting == BusMethod::Starting::never)
        sd_bus_message_set_auto_start(message, 0);
    return composed;
}

BusResult<BusMessage> BusConnection::send(const BusMessage& message, Seconds timeout)
{
    sd_bus_error error = SD_BUS_ERROR_NULL;
    sd_bus_message* reply = nullptr;
    auto microseconds = static_cast<std::uint64_t>(std::max(timeout.value, 0.001) * 1e6);
    int status = sd_bus_call(m_bus.get(), message.get(), microseconds, &error, &reply);
    // While waiting, the call may have read signals off the socket: they are in its queue now, and the
    // descriptor will not become readable on their account.
    if (m_loop && m_watch)
        processLater();
    if (status < 0) {
        auto refused = problem(status, &error);
        sd_bus_error_free(&error);
        return std::unexpected(std::move(refused));
    }
    return BusMessage(reply);
}

BusResult<BusMessage> BusConnection::property(const char* destination, const char* path,
                                              const char* interface, const char* name, Seconds timeout)
{
    return call({destination, path, "org.freedesktop.DBus.Properties", "Get"}, timeout, "ss", interface,
                name);
}

BusConnection::Slot BusConnection::onSignal(const std::string& rule, Handler handler)
{
    auto owned = std::make_unique<Handler>(std::move(handler));
    sd_bus_slot* slot = nullptr;
    int status = sd_bus_add_match(
        m_bus.get(), &slot, rule.c_str(),
        [](sd_bus_message* message, void* context, sd_bus_error*) {
            auto received = BusMessage::borrowed(message);
            // A copy: the handler may end its own subscription.
            auto work = *static_cast<Handler*>(context);
            work(received);
            return 0;
        },
        owned.get());
    if (status < 0)
        return {};
    sd_bus_slot_set_destroy_callback(slot, [](void* context) { delete static_cast<Handler*>(context); });
    owned.release();
    return {slot, [](sd_bus_slot* ended) { sd_bus_slot_unref(ended); }};
}

} // namespace stintbook
