#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/SystemZone.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {

namespace fs = std::filesystem;

TEST(SystemZone, ReportsAnotherZoneHoweverItsFileIsReplaced)
{
    const TemporaryDirectory directory;
    auto zone = [](const fs::path& link) {
        auto target = fs::read_symlink(link).string();
        return CalendarContext::inZone(target.substr(target.find("zoneinfo/") + 9)).value();
    };
    auto file = directory / "localtime";
    fs::create_symlink("/usr/share/zoneinfo/Europe/Berlin", file);

    EventLoop loop;
    SystemZone watch(loop, [&] { return zone(file); }, directory.path());
    std::vector<std::string> zones;
    watch.follow([&](const CalendarContext& calendar) { zones.push_back(calendar.timeZoneIdentifier()); });
    EXPECT_EQ(watch.current().timeZoneIdentifier(), "Europe/Berlin");

    // As the desktop's settings do it: under another name, then moved into place.
    fs::create_symlink("/usr/share/zoneinfo/Asia/Tokyo", directory / "localtime.new");
    fs::rename(directory / "localtime.new", file);
    ASSERT_TRUE(loop.runUntil([&] { return zones.size() == 1; }, {10}));
    // The same zone again is no change.
    fs::create_symlink("/usr/share/zoneinfo/Asia/Tokyo", directory / "localtime.new");
    fs::rename(directory / "localtime.new", file);
    // As an administrator does it.
    fs::create_symlink("/usr/share/zoneinfo/America/Lima", directory / "other");
    fs::remove(file);
    fs::create_symlink("/usr/share/zoneinfo/America/Lima", file);
    ASSERT_TRUE(loop.runUntil([&] { return zones.size() == 2; }, {10}));
    EXPECT_EQ(zones, (std::vector<std::string>{"Asia/Tokyo", "America/Lima"}));
}

} // namespace stintbook
