#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Screens/Models/RowModel.h"

namespace stintbook {

class OpenedStore;

/// An application to choose, by its identifier.
struct ApplicationRow {
    std::string id;
    QString name;
    /// Whether work in it has been recorded.
    bool isObserved = false;

    friend bool operator==(const ApplicationRow&, const ApplicationRow&) = default;
};

/// "choiceID", "name" and "isObserved".
std::vector<RowModel<ApplicationRow>::Role> applicationRoles();

struct KnownApplications {
    /// Those that work was recorded in, then the other installed ones; each by name.
    std::vector<ApplicationRow> rows;
    /// Why the recorded ones are not known.
    std::optional<std::string> problem;
};
/// Blocks: it reads the store and the desktop's entries.
KnownApplications knownApplications(OpenedStore& store);

/// Those whose name or identifier contains the words.
std::vector<ApplicationRow> found(const std::vector<ApplicationRow>& applications, const QString& words);
/// The identifier itself where no name is known for it.
QString nameOf(const std::vector<ApplicationRow>& applications, const std::string& identifier);

} // namespace stintbook
