#include <vector>

#include "DesktopTest.h"
#include "Platform/PackageKitUpdates.h"

namespace stintbook {

namespace {

/// A service whose transactions do at once what the test says, written for the mock that plays it.
class PackageKitUpdatesTest : public DesktopTest {
protected:
    void startService(const std::string& resolve, const std::string& updates, const std::string& update)
    {
        desktop.startSystemBus();
        desktop.start({"/usr/bin/python3", "-m", "dbusmock", "--system", service, servicePath, service});
        const auto add = [&] {
            return desktop.tryRun(call("AddMethod", {service, "CreateTransaction", "", "o", "ret = '/1'"}))
                .has_value();
        };
        ASSERT_TRUE(PrivateDesktop::eventually(add));
        // As texts are written on gdbus's command line.
        const auto method = [](const std::string& name, const std::string& types, std::string code) {
            for (auto at = code.find('\n'); at != code.npos; at = code.find('\n', at))
                code.replace(at, 1, "\\n");
            return "('" + name + "', '" + types + "', '', \"" + code + "\")";
        };
        desktop.run(call("AddObject",
                         {"/1", transaction, "{}",
                          "[" + method("SetHints", "as", "") + "," + method("Cancel", "", "") + ","
                              + method("Resolve", "tas", resolve + exit(1)) + ","
                              + method("RefreshCache", "b", exit(1)) + ","
                              + method("GetUpdates", "t", updates + exit(1)) + ","
                              + method("UpdatePackages", "tas", update) + "]"}));
    }

    static std::string package(const std::string& identifier)
    {
        return emission("Package", "uss", "dbus.UInt32(1), '" + identifier + "', ''");
    }
    static std::string exit(int code)
    {
        return emission("Finished", "uu", "dbus.UInt32(" + std::to_string(code) + "), dbus.UInt32(1)");
    }
    static std::string error(int code, const std::string& text)
    {
        return emission("ErrorCode", "us", "dbus.UInt32(" + std::to_string(code) + "), '" + text + "'");
    }
    static std::string percentage(int done)
    {
        return "self.EmitSignal('org.freedesktop.DBus.Properties', 'PropertiesChanged', 'sa{sv}as', ['"
            + std::string(transaction) + "', {'Percentage': dbus.UInt32(" + std::to_string(done)
            + ")}, []])\n";
    }

    static constexpr const char* service = "org.freedesktop.PackageKit";
    static constexpr const char* servicePath = "/org/freedesktop/PackageKit";
    static constexpr const char* transaction = "org.freedesktop.PackageKit.Transaction";

    PackageKitUpdates updates{"velloran"};

private:
    static std::string emission(const std::string& signal, const std::string& types,
                                const std::string& values)
    {
        return "self.EmitSignal('" + std::string(transaction) + "', '" + signal + "', '" + types + "', ["
            + values + "])\n";
    }
    static PrivateDesktop::Command call(const std::string& method, const PrivateDesktop::Command& arguments)
    {
        PrivateDesktop::Command command{"gdbus",     "call",     "--system",
                                        "--dest",    service,    "--object-path",
                                        servicePath, "--method", "org.freedesktop.DBus.Mock." + method};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return command;
    }
};

} // namespace

TEST_F(PackageKitUpdatesTest, FindsANewerVersionAndHasItInstalled)
{
    startService(package("velloran;0.1.0;amd64;installed"),
                 package("velloran-doc;9;all;stable") + package("velloran;0.2.0;amd64;stable"),
                 percentage(40) + percentage(101) + exit(1));
    const SoftwareUpdate newer{.version = "0.2.0", .identifier = "velloran;0.2.0;amd64;stable"};
    EXPECT_EQ(updates.check({}), newer);

    std::vector<double> told;
    EXPECT_TRUE(updates.install(newer, [&](double done) { told.push_back(done); }, {}));
    EXPECT_EQ(told, std::vector{0.4});
}

TEST_F(PackageKitUpdatesTest, TellsWhyNothingWasInstalled)
{
    startService(package("velloran;0.1.0;amd64;installed"), "",
                 error(48, "Failed to obtain authentication.") + exit(2));
    EXPECT_EQ(updates.check({}), std::nullopt);
    EXPECT_EQ(updates.install({}, {}, {}).error().kind, SoftwareUpdateProblem::Kind::refused);
}

TEST_F(PackageKitUpdatesTest, IsNotAvailableWhereNobodyKeepsThisProgramUpToDate)
{
    const SoftwareUpdateProblem notHere{.kind = SoftwareUpdateProblem::Kind::notAvailableHere, .reason = {}};
    desktop.setEnvironment("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere");
    EXPECT_EQ(updates.check({}).error(), notHere);
    startService("", "", "");
    EXPECT_EQ(updates.check({}).error(), notHere);
}

} // namespace stintbook
