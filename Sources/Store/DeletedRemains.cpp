#include "Store/DeletedRemains.h"

#include <chrono>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>

#include <fmt/format.h>

#include "Base/FileReplacement.h"
#include "Base/Log.h"
#include "Base/Try.h"
#include "Store/ActivityDeletion.h"
#include "Store/DeletionMark.h"
#include "Store/StoreFileInspection.h"

namespace stintbook {

namespace {

using Remains = DeletedActivity::Remains;

constexpr auto pauseBetweenAttempts = std::chrono::milliseconds(50);
/// In bytes of what it holds; writing so many anew takes a fraction of a second.
constexpr std::int64_t smallStore = 64 << 20;
/// So many pages are given back at a time; saving goes on in between.
constexpr std::int64_t pagesAtATime = 1000;
constexpr auto pauseBetweenPages = std::chrono::milliseconds(2);

/// Copies made before a migration with what belongs to them, drafts, and unsaved segments that could not be read:
/// what they hold of a scope cannot be taken out of them.
bool isCopy(std::string_view name, std::string_view store)
{
    if (!name.starts_with(store))
        return false;
    name.remove_prefix(store.size());
    const bool isBackup = name.starts_with(".v") && name.find("-backup") != std::string_view::npos;
    return isBackup || name.starts_with(".new") || name == ".unsaved.damaged";
}

Stored<void> removeCopies(const std::filesystem::path& storeFile)
{
    std::error_code error;
    std::vector<std::filesystem::path> copies;
    for (std::filesystem::directory_iterator entry(directoryOf(storeFile), error), end;
         !error && entry != end; entry.increment(error)) {
        if (isCopy(entry->path().filename().string(), storeFile.filename().string()))
            copies.push_back(entry->path());
    }
    for (const auto& copy : copies) {
        if (!error)
            std::filesystem::remove(copy, error);
    }
    if (error)
        return std::unexpected<PersistenceError>(
            StoreFailure{fmt::format("A copy of the store could not be removed ({}).", error.message())});
    return {};
}

/// False when somebody has read an older state for all of that time.
Stored<bool> emptyLog(StoreDatabase& database, const DeletionCourse& course)
{
    const auto deadline = std::chrono::steady_clock::now() + course.patience;
    while (!TRY(database.foldLog())) {
        if (course.stop.stop_requested() || std::chrono::steady_clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(pauseBetweenAttempts);
    }
    return true;
}

Stored<std::int64_t> number(StoreDatabase& database, const char* sql)
{
    return database.read(
        [&](StoreConnection& connection) -> Stored<std::int64_t> { return connection.number(sql); });
}

/// Gives the free pages back to the file system, a few at a time.
Stored<bool> shrink(StoreDatabase& database, const DeletionCourse& course)
{
    const auto all = TRY(number(database, "PRAGMA freelist_count"));
    for (auto left = all; left > 0;) {
        if (course.stop.stop_requested())
            return false;
        TRY(database.write([](StoreConnection& connection) -> Stored<void> {
            connection.execute(fmt::format("PRAGMA incremental_vacuum({})", pagesAtATime));
            return {};
        }));
        const auto now = TRY(number(database, "PRAGMA freelist_count"));
        // A store of another program's making may not give its pages back; they hold nothing any more.
        if (now >= left)
            break;
        left = now;
        if (course.progress)
            course.progress(1 - 0.2 * static_cast<double>(left) / static_cast<double>(all));
        std::this_thread::sleep_for(pauseBetweenPages);
    }
    return true;
}

/// What is deleted is overwritten where it was. Yet when pages were split or joined before, a copy of it may lie in
/// the unused part of a page that other records use. A small store is written anew, which leaves nothing; one
/// where that would keep capture waiting is recorded in the order of time, where such copies all but never come
/// about.
Stored<bool> clearPages(StoreDatabase& database, const DeletionCourse& course)
{
    const auto size = TRY(number(database,
                                 "SELECT (page_count - freelist_count) * page_size FROM "
                                 "pragma_page_count, pragma_freelist_count, pragma_page_size"));
    if (size > smallStore)
        return shrink(database, course);
    TRY(database.rewrite());
    return true;
}

Stored<bool> erase(StoreDatabase& database, const DeletionCourse& course)
{
    TRY(removeCopies(database.file()));
    return TRY(emptyLog(database, course)) && TRY(clearPages(database, course))
        && TRY(emptyLog(database, course));
}

/// Whether anything of what was to be deleted is still recorded, which the transaction would have taken.
Stored<bool> isStillRecorded(StoreDatabase& database, const DeletionMark& mark)
{
    return database.read([&](StoreConnection& connection) -> Stored<bool> {
        if (connection.query("SELECT 1 FROM ActivitySegment WHERE start < ?1 AND \"end\" > ?2 LIMIT 1")
                .bind(mark.extent.end, mark.extent.start)
                .next())
            return true;
        return mark.takesReviewedWork
            && connection.query("SELECT 1 FROM ReviewedWorkItem WHERE start < ?1 AND \"end\" > ?2 LIMIT 1")
                   .bind(mark.extent.end, mark.extent.start)
                   .next();
    });
}

} // namespace

Remains eraseDeletedRemains(StoreDatabase& database, const DeletionCourse& course)
{
    if (database.file().empty() || !readDeletionMark(database.file()))
        return Remains::erased;
    const auto isErased = erase(database, course);
    if (isErased && *isErased) {
        removeDeletionMark(database.file());
        return Remains::erased;
    }
    log::error(
        "What was deleted could not be erased from the store's files yet: {} It is done when the store is "
        "opened the next time.",
        isErased ? "another program is reading an older state of the store." : message(isErased.error()));
    return Remains::leftForTheNextStart;
}

void finishDeletion(StoreDatabase& database)
{
    const auto& file = database.file();
    const auto mark = readDeletionMark(file);
    if (!mark)
        return removeDeletionMark(file);
    if (!mark->isCommitted) {
        const auto isRecorded = isStillRecorded(database, *mark);
        if (!isRecorded)
            return;
        if (*isRecorded)
            return removeDeletionMark(file);
        markDeletionCommitted(file);
    }
    eraseDeletedRemains(database);
}

} // namespace stintbook
