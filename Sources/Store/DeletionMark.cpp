#include "Store/DeletionMark.h"

#include <fstream>
#include <string>
#include <tuple>

#include <fmt/format.h>

#include "Base/NumberText.h"
#include "Store/StoreFileInspection.h"

namespace stintbook {

namespace {

std::filesystem::path markFile(const std::filesystem::path& storeFile)
{
    return besideStore(storeFile, ".deletion");
}

std::string encoded(const DeletionMark& mark)
{
    return fmt::format("{} {} {} {}\n", mark.extent.start.secondsSinceEpoch,
                       mark.extent.end.secondsSinceEpoch, mark.takesReviewedWork ? "reviewed" : "observed",
                       mark.isCommitted ? "committed" : "begun");
}

} // namespace

std::optional<DeletionMark> readDeletionMark(const std::filesystem::path& storeFile)
{
    std::ifstream stream(markFile(storeFile));
    std::string from;
    std::string to;
    std::string what;
    std::string course;
    stream >> from >> to >> what >> course;
    const auto start = numberIn<double>(from);
    const auto end = numberIn<double>(to);
    if (!start || !end || (what != "reviewed" && what != "observed")
        || (course != "committed" && course != "begun"))
        return std::nullopt;
    return DeletionMark{.extent = {{*start}, {*end}},
                        .takesReviewedWork = what == "reviewed",
                        .isCommitted = course == "committed"};
}

FileWritten writeDeletionMark(const std::filesystem::path& storeFile, const DeletionMark& mark)
{
    return replaceFile(markFile(storeFile), encoded(mark), 0600);
}

void markDeletionCommitted(const std::filesystem::path& storeFile)
{
    auto mark = readDeletionMark(storeFile);
    if (!mark || mark->isCommitted)
        return;
    mark->isCommitted = true;
    std::ignore = writeDeletionMark(storeFile, *mark);
}

void removeDeletionMark(const std::filesystem::path& storeFile)
{
    std::error_code ignored;
    std::filesystem::remove(markFile(storeFile), ignored);
    removeLeftDrafts(markFile(storeFile));
}

} // namespace stintbook
