#include <gtest/gtest.h>

#include "Domain/SystemTimeZone.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {
namespace {

class SystemTimeZoneTest : public testing::Test {
protected:
    void link(const std::filesystem::path& target) const
    {
        std::filesystem::create_symlink(target, sources.localTimeLink);
    }

    TemporaryDirectory folder;
    SystemTimeZoneSources sources{.localTimeLink = folder / "localtime", .nameFile = folder / "timezone"};
};

TEST_F(SystemTimeZoneTest, PrefersTheEnvironmentInAnyOfItsForms)
{
    link("/usr/share/zoneinfo/Asia/Tokyo");
    for (const auto* text : {"Europe/Berlin", ":Europe/Berlin", "/usr/share/zoneinfo/Europe/Berlin",
                             ":/usr/share/zoneinfo/posix/Europe/Berlin"}) {
        sources.environment = text;
        EXPECT_EQ(systemTimeZoneIdentifier(sources), "Europe/Berlin") << text;
    }
    for (const auto* text : {"", ":", ":/etc/localtime", "CET-1CEST,M3.5.0,M10.5.0/3", "Nowhere"}) {
        sources.environment = text;
        EXPECT_EQ(systemTimeZoneIdentifier(sources), "Asia/Tokyo") << text;
    }
}

TEST_F(SystemTimeZoneTest, FollowsTheLinkAlsoWhenItIsRelativeOrIndirect)
{
    link("../usr/share/zoneinfo/America/Argentina/Salta");
    EXPECT_EQ(systemTimeZoneIdentifier(sources), "America/Argentina/Salta");

    std::filesystem::remove(sources.localTimeLink);
    std::filesystem::create_symlink("/usr/share/zoneinfo/Asia/Tokyo", folder / "chosen");
    link("chosen");
    EXPECT_EQ(systemTimeZoneIdentifier(sources), "Asia/Tokyo");
}

TEST_F(SystemTimeZoneTest, FallsBackToTheNameFileAndToUTC)
{
    EXPECT_EQ(systemTimeZoneIdentifier(sources), "UTC");
    writeFile(sources.nameFile, "Australia/Lord_Howe\n");
    EXPECT_EQ(systemTimeZoneIdentifier(sources), "Australia/Lord_Howe");
    writeFile(sources.nameFile, "nonsense");
    EXPECT_EQ(systemTimeZoneIdentifier(sources), "UTC");
}

} // namespace
} // namespace stintbook
