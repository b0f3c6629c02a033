#pragma once

#include <array>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "App/ClientBook.h"
#include "App/DayBook.h"
#include "App/OpenedStore.h"
#include "Store/PersistentActivitySegmentRepository.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {

/// A store on disk with 20 November 2026 in Berlin: work from nine to eleven in two applications, an idle
/// half hour, work until noon; one client with one project.
class StoreOfADay {
public:
    StoreOfADay()
    {
        const std::array<std::pair<const char*, int>, 3> work{{{"kate", 9}, {"konsole", 10}, {"kate", 11}}};
        std::vector<ActivitySegment> segments;
        for (const auto& [application, hour] : work)
            segments.push_back(segment(hours(hour, hour + 1), ActivityKind::work, application));
        segments[2].start = at(11, 30);
        segments.push_back(segment({at(11), at(11, 30)}, ActivityKind::idle, "konsole"));
        EXPECT_TRUE(store->segments().save(segments));
        client =
            *ClientBook(*store).addClient({.name = "Nordlicht", .color = {}, .rate = "96", .rounding = {}});
        project = *ClientBook(*store).addProject(
            {.clientID = client, .name = "Relaunch", .isBillable = true, .rate = {}, .rounding = {}});
    }

    std::unique_ptr<OpenedStore> open(StoreRole role = StoreRole::guest) const
    {
        auto opened = OpenedStore::open(
            {{"STINTBOOK_STORE_DIRECTORY", directory.path() / "store"}, {"HOME", directory.path().string()}},
            role);
        if (!opened)
            throw std::runtime_error(message(opened.error()));
        return *std::move(opened);
    }
    Instant at(int hour, int minute = 0) const { return day.start + Seconds{hour * 3600.0 + minute * 60.0}; }
    Interval hours(int from, int to) const { return {at(from), at(to)}; }
    WorkTarget target() const { return {client, project, {}}; }
    DayBook book() { return DayBook(*store, calendar); }

    std::vector<UUID> blockIDs()
    {
        std::vector<UUID> ids;
        const auto opened = *book().open(day);
        for (const auto& block : opened.content().blocks)
            ids.push_back(block.id);
        return ids;
    }

    /// Everything assigned, and the day marked ready at eight in the evening.
    void makeReady()
    {
        ASSERT_TRUE(book().assign(day, blockIDs(), target()));
        ASSERT_TRUE(book().markReady(day, at(20)));
    }

    ActivitySegment segment(Interval time, ActivityKind kind, const std::string& application) const
    {
        return {.id = SegmentID::random(),
                .start = time.start,
                .end = time.end,
                .kind = kind,
                .application = ApplicationIdentity{application, application},
                .evidence = ContextEvidence::applicationOnly,
                .timeZone = calendar.stamp(time.start)};
    }

    TemporaryDirectory directory;
    CalendarContext calendar = *CalendarContext::inZone("Europe/Berlin");
    LocalDay day = *calendar.dayOn({2026, 11, 20});
    std::unique_ptr<OpenedStore> store = open();
    ClientID client;
    ProjectID project;
};

} // namespace stintbook
