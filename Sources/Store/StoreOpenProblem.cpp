#include "Store/StoreOpenProblem.h"

#include <fmt/format.h>

namespace stintbook {

std::string message(const StoreOpenProblem& problem)
{
    const auto file = problem.file.string();
    switch (problem.kind) {
    case StoreOpenProblem::Kind::writtenByNewerVersion:
        return fmt::format(
            "The store {} was written by a newer version of Velloran, so this version left it as it is.",
            file);
    case StoreOpenProblem::Kind::notAStore:
        return fmt::format("The file {} is not a Velloran store, so it was left as it is.", file);
    case StoreOpenProblem::Kind::emptyFile:
        return fmt::format("The file {} is empty and not a Velloran store, so it was left as it is.", file);
    case StoreOpenProblem::Kind::cutShort:
        return fmt::format("The store {} is cut short: a part of the file is missing. It was left as it is.",
                           file);
    case StoreOpenProblem::Kind::damaged:
        return fmt::format("The store {} is damaged and could not be read. It was left as it is.", file);
    case StoreOpenProblem::Kind::unexpectedLayout:
        return fmt::format(
            "The tables of the store {} are not those that its version has, so it was left as it is.", file);
    case StoreOpenProblem::Kind::unreadable:
        return fmt::format("The store {} could not be read: {}.", file, problem.detail);
    case StoreOpenProblem::Kind::readOnly:
        return fmt::format("The store {} cannot be written to: {}.", file, problem.detail);
    case StoreOpenProblem::Kind::diskFull:
        return fmt::format("The store {} could not be opened: the disk is full.", file);
    case StoreOpenProblem::Kind::busy:
        return fmt::format("The store {} is in use by another program. Try again in a moment.", file);
    case StoreOpenProblem::Kind::earlierVersionInUse:
        return fmt::format("The store {} is in use by an earlier version of Velloran. Quit that copy first.",
                           file);
    case StoreOpenProblem::Kind::missing:
        return fmt::format("There is no store {}.", file);
    case StoreOpenProblem::Kind::earlierVersion:
        return fmt::format("The store {} was written by an earlier version of Velloran, and this one has not "
                           "brought it up to date yet.",
                           file);
    case StoreOpenProblem::Kind::other:
        break;
    }
    return fmt::format("The store {} could not be opened: {}.", file, problem.detail);
}

StoreOpenProblem storeOpenProblem(const std::filesystem::path& file, const SQLite::Exception& exception,
                                  sqlite3* connection)
{
    using Kind = StoreOpenProblem::Kind;
    const auto kind = [&] {
        switch (faultOf(exception, connection)) {
        case StoreFault::diskFull:
            return Kind::diskFull;
        case StoreFault::damaged:
            return Kind::damaged;
        case StoreFault::notAStore:
            return Kind::notAStore;
        case StoreFault::busy:
            return Kind::busy;
        case StoreFault::readOnly:
            return Kind::readOnly;
        case StoreFault::cannotOpen:
        case StoreFault::inputOutput:
        case StoreFault::other:
            break;
        }
        return Kind::other;
    }();
    return {kind, file, causeOf(exception, connection)};
}

} // namespace stintbook
