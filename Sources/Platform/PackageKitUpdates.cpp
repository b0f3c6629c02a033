#include "Platform/PackageKitUpdates.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <tuple>
#include <utility>
#include <vector>

#include "Base/Text.h"
#include "Base/Try.h"
#include "Platform/BusConnection.h"
#include "Platform/EventLoop.h"

namespace stintbook {

namespace {

constexpr const char* service = "org.freedesktop.PackageKit";
constexpr const char* transactionInterface = "org.freedesktop.PackageKit.Transaction";

/// Until an answer to a call, which may have to start the service.
constexpr Seconds patience{25};
/// Until a transaction ends: others may stand before it in the line.
constexpr Seconds longestTransaction{3600};

// Bits and numbers of the service.
constexpr std::uint64_t anyPackage = 1U << 1;
constexpr std::uint64_t installedPackages = 1U << 2;
constexpr std::uint64_t onlyTrusted = 1U << 1;
constexpr std::uint32_t exitedWell = 1;
constexpr std::uint32_t exitedCancelled = 3;
constexpr std::uint32_t errorCancelled = 17;
constexpr std::uint32_t errorNotAuthorized = 48;
constexpr std::uint32_t wholePercentage = 100;

using Kind = SoftwareUpdateProblem::Kind;
template <typename T> using Answer = std::expected<T, SoftwareUpdateProblem>;

SoftwareUpdateProblem problemOf(const BusProblem& problem)
{
    if (problem.isMissingService())
        return {Kind::notAvailableHere, {}};
    if (problem.name.ends_with(".RefusedByPolicy"))
        return {Kind::refused, {}};
    return {Kind::failed, problem.text};
}

template <typename T> Answer<T> answered(BusResult<T> result)
{
    if (!result)
        return std::unexpected(problemOf(result.error()));
    return *std::move(result);
}

/// "velloran;1.2.0;amd64;stable": name, version, architecture and source.
struct PackageID {
    explicit PackageID(std::string text)
        : whole(std::move(text))
        , name(whole.substr(0, whole.find(';')))
    {
        const auto rest = name.size() < whole.size() ? whole.substr(name.size() + 1) : std::string();
        version = rest.substr(0, rest.find(';'));
    }

    std::string whole;
    std::string name;
    std::string version;
};

/// One task that the service does, on a connection of its own.
class Transaction {
public:
    static Answer<std::unique_ptr<Transaction>> begin(BusConnection& bus, EventLoop& loop,
                                                      std::stop_token stop)
    {
        auto reply = TRY(answered(
            bus.call({service, "/org/freedesktop/PackageKit", service, "CreateTransaction"}, patience)));
        const auto path = reply.readText();
        if (!path)
            return std::unexpected(SoftwareUpdateProblem{});
        return std::unique_ptr<Transaction>(new Transaction(bus, loop, *path, std::move(stop)));
    }

    void followProgress(std::function<void(double)> progress) { m_progress = std::move(progress); }

    /// Calls the method and waits for what comes of it.
    template <typename... Arguments>
    Answer<std::vector<PackageID>> run(const char* member, const char* types, Arguments... arguments)
    {
        // The user may be asked for a password.
        TRY(answered(
            m_bus.call(method("SetHints"), patience, "as", 2, "interactive=true", "background=false")));
        TRY(answered(m_bus.call(method(member), patience, types, arguments...)));
        // A request to stop wakes the loop.
        const std::stop_callback wake(m_stop, [this] { m_loop.post([] { }); });
        if (m_loop.runUntil([this] { return m_exit || m_stop.stop_requested() || !m_bus.isOpen(); },
                            longestTransaction)
            && m_exit)
            return outcome();
        std::ignore = m_bus.call(method("Cancel"), Seconds{1});
        if (m_stop.stop_requested())
            return std::unexpected(SoftwareUpdateProblem{Kind::refused, {}});
        return std::unexpected(SoftwareUpdateProblem{});
    }

private:
    Transaction(BusConnection& bus, EventLoop& loop, std::string path, std::stop_token stop)
        : m_bus(bus)
        , m_loop(loop)
        , m_path(std::move(path))
        , m_stop(std::move(stop))
    {
        on(transactionInterface, "Package", [this](BusMessage& signal) {
            signal.skip();
            if (auto identifier = signal.readText())
                m_packages.emplace_back(*std::move(identifier));
        });
        on(transactionInterface, "ErrorCode", [this](BusMessage& signal) {
            m_errorCode = signal.readUInt32();
            m_errorText = signal.readText().value_or("");
        });
        on(transactionInterface, "Finished",
           [this](BusMessage& signal) { m_exit = signal.readUInt32().value_or(0); });
        on("org.freedesktop.DBus.Properties", "PropertiesChanged",
           [this](BusMessage& signal) { readProgress(signal); });
    }

    void on(const std::string& interface, const std::string& member, BusConnection::Handler handler)
    {
        m_slots.push_back(m_bus.onSignal("type='signal',path='" + m_path + "',interface='"
                                             + interface + "',member='" + member + "'",
                                         std::move(handler)));
    }

    BusMethod method(const char* member) const
    {
        return {service, m_path.c_str(), transactionInterface, member};
    }

    void readProgress(BusMessage& signal)
    {
        signal.skip();
        if (!m_progress || !signal.enter('a', "{sv}"))
            return;
        while (signal.enter('e', "sv")) {
            const auto name = signal.readText();
            if (name == "Percentage" && signal.enter('v', "u")) {
                // One more than the whole: it is not known.
                if (const auto done = signal.readUInt32().value_or(wholePercentage + 1);
                    done <= wholePercentage)
                    m_progress(double(done) / wholePercentage);
                signal.leave();
            } else {
                signal.skip();
            }
            signal.leave();
        }
    }

    Answer<std::vector<PackageID>> outcome()
    {
        if (m_exit == exitedWell)
            return std::move(m_packages);
        if (m_exit == exitedCancelled || m_errorCode == errorCancelled || m_errorCode == errorNotAuthorized)
            return std::unexpected(SoftwareUpdateProblem{Kind::refused, {}});
        return std::unexpected(SoftwareUpdateProblem{Kind::failed, trimmed(m_errorText)});
    }

    BusConnection& m_bus;
    EventLoop& m_loop;
    std::string m_path;
    std::stop_token m_stop;
    std::function<void(double)> m_progress;
    std::vector<BusConnection::Slot> m_slots;
    std::vector<PackageID> m_packages;
    std::optional<std::uint32_t> m_exit;
    std::optional<std::uint32_t> m_errorCode;
    std::string m_errorText;
};

/// The service, for as long as one question takes.
struct Service {
    static Answer<std::unique_ptr<Service>> connect()
    {
        auto bus = BusConnection::system();
        if (!bus)
            return std::unexpected(SoftwareUpdateProblem{Kind::notAvailableHere, {}});
        auto service = std::make_unique<Service>();
        service->bus = *std::move(bus);
        service->bus->attach(service->loop, [] { });
        return service;
    }

    EventLoop loop;
    std::unique_ptr<BusConnection> bus;
};

const PackageID* named(const std::vector<PackageID>& packages, const std::string& name)
{
    const auto found = std::ranges::find(packages, name, &PackageID::name);
    return found == packages.end() ? nullptr : &*found;
}

} // namespace

PackageKitUpdates::PackageKitUpdates(std::string package)
    : m_package(std::move(package))
{
}

std::expected<std::optional<SoftwareUpdate>, SoftwareUpdateProblem> PackageKitUpdates::check(
    std::stop_token stop)
{
    const auto service = TRY(Service::connect());
    const auto begin = [&] { return Transaction::begin(*service->bus, service->loop, stop); };
    const auto resolving = TRY(begin());
    const auto installed = TRY(resolving->run("Resolve", "tas", installedPackages, 1, m_package.c_str()));
    if (named(installed, m_package) == nullptr)
        return std::unexpected(SoftwareUpdateProblem{Kind::notAvailableHere, {}});
    const auto refreshing = TRY(begin());
    TRY(refreshing->run("RefreshCache", "b", 0));
    const auto listing = TRY(begin());
    const auto updates = TRY(listing->run("GetUpdates", "t", anyPackage));
    const auto* update = named(updates, m_package);
    if (update == nullptr)
        return std::nullopt;
    return SoftwareUpdate{.version = update->version, .identifier = update->whole};
}

std::expected<void, SoftwareUpdateProblem> PackageKitUpdates::install(
    const SoftwareUpdate& update, const std::function<void(double)>& progress, std::stop_token stop)
{
    const auto service = TRY(Service::connect());
    const auto updating = TRY(Transaction::begin(*service->bus, service->loop, std::move(stop)));
    updating->followProgress(progress);
    TRY(updating->run("UpdatePackages", "tas", onlyTrusted, 1, update.identifier.c_str()));
    return {};
}

} // namespace stintbook
