#include "Screens/Models/ApplicationRows.h"

#include <tuple>
#include <unordered_set>

#include "App/OpenedStore.h"
#include "Base/Text.h"
#include "Platform/ApplicationIdentities.h"
#include "Store/PersistentActivitySegmentRepository.h"

namespace stintbook {

std::vector<RowModel<ApplicationRow>::Role> applicationRoles()
{
    using Rows = RowModel<ApplicationRow>;
    return {Rows::role("choiceID", &ApplicationRow::id), Rows::role("name", &ApplicationRow::name),
            Rows::role("isObserved", &ApplicationRow::isObserved)};
}

KnownApplications knownApplications(OpenedStore& store)
{
    KnownApplications known;
    std::unordered_set<std::string> listed;
    const auto add = [&](const ApplicationIdentity& application, bool isObserved) {
        const auto& [identifier, name] = application;
        if (listed.insert(identifier).second)
            known.rows.push_back({identifier, text(name), isObserved});
    };
    if (const auto observed = store.segments().observedApplications()) {
        for (const auto& application : *observed)
            add({application.bundleIdentifier, application.displayName}, true);
    } else {
        known.problem = message(observed.error());
    }
    for (const auto& application : ApplicationIdentities().installed())
        add(application, false);
    std::ranges::sort(known.rows, {}, [](const ApplicationRow& row) {
        return std::tuple(!row.isObserved, foldedForSearch(row.name.toStdString()), row.id);
    });
    return known;
}

std::vector<ApplicationRow> found(const std::vector<ApplicationRow>& applications, const QString& words)
{
    const auto wanted = foldedForSearch(words.trimmed().toStdString());
    std::vector<ApplicationRow> rows;
    std::ranges::copy_if(applications, std::back_inserter(rows), [&](const ApplicationRow& row) {
        return foldedForSearch(row.name.toStdString()).contains(wanted)
            || foldedForSearch(row.id).contains(wanted);
    });
    return rows;
}

QString nameOf(const std::vector<ApplicationRow>& applications, const std::string& identifier)
{
    const auto found = std::ranges::find(applications, identifier, &ApplicationRow::id);
    return found == applications.end() ? text(identifier) : found->name;
}

} // namespace stintbook
