#include "Screens/Settings/ExclusionSettings.h"

#include <algorithm>
#include <set>
#include <tuple>

#include "Base/Text.h"
#include "Platform/ApplicationIdentities.h"
#include "Store/PersistentActivitySegmentRepository.h"

namespace stintbook {

namespace {

using Rows = RowModel<ExcludableApplicationRow>;

std::vector<Rows::Role> roles()
{
    return {Rows::role("identifier", &ExcludableApplicationRow::id),
            Rows::role("name", &ExcludableApplicationRow::name),
            Rows::role("wasSeen", &ExcludableApplicationRow::wasSeen)};
}

std::map<std::string, std::string> installedNames()
{
    std::map<std::string, std::string> names;
    for (auto& application : ApplicationIdentities().installed())
        names.emplace(std::move(application.bundleIdentifier), std::move(application.displayName));
    return names;
}

} // namespace

ExclusionSettings::ExclusionSettings(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_excludedRows(roles())
    , m_candidateRows(roles())
    , m_errands("applications", context.main)
{
}

void ExclusionSettings::refresh()
{
    m_errands.run(this, installedNames, [this](std::map<std::string, std::string> names) {
        m_names = std::move(names);
        readObserved();
    });
}

void ExclusionSettings::readObserved()
{
    m_context.desk.ask(
        this, [](StoreDesk::Workplace& place) { return place.store.segments().observedApplications(); },
        [this](Stored<std::vector<ObservedApplication>> observed) {
            if (observed)
                m_observed = *std::move(observed);
            else
                m_problem = text(message(observed.error()));
            openModel();
        },
        [this](const std::string& problem) {
            m_problem = text(problem);
            Q_EMIT changed();
        });
}

void ExclusionSettings::openModel()
{
    if (m_model)
        return m_model->reload();
    m_context.desk.ask(
        this, [](StoreDesk::Workplace& place) { return std::make_shared<RuleBook>(place.store); },
        [this](std::shared_ptr<RuleBook> book) {
            if (m_model)
                return;
            m_model.emplace(m_context.desk.confined(std::move(book)), m_context.main,
                            [this](const std::string& identifier) {
                                const auto name = m_names.find(identifier);
                                return name == m_names.end() ? std::string() : name->second;
                            });
            m_changes = m_model->follow([this] { show(); });
            m_model->reload();
        },
        [](const std::string&) {});
}

void ExclusionSettings::show()
{
    m_problem = text(m_model->problemMessage().value_or(""));
    std::vector<ExcludableApplicationRow> excluded;
    std::set<std::string> taken;
    for (const auto& application : m_model->applications()) {
        taken.insert(application.bundleIdentifier);
        excluded.push_back({application.bundleIdentifier, application.displayName});
    }
    m_excludedRows.show(std::move(excluded));

    std::vector<ExcludableApplicationRow> candidates;
    const auto wanted = foldedForSearch(m_search.toStdString());
    const auto offer = [&](const std::string& identifier, const std::string& name, bool wasSeen) {
        if (taken.insert(identifier).second && foldedForSearch(name).find(wanted) != std::string::npos)
            candidates.push_back({identifier, name, wasSeen});
    };
    for (const auto& application : m_observed)
        offer(application.bundleIdentifier, application.displayName, true);
    for (const auto& [identifier, name] : m_names)
        offer(identifier, name, false);
    std::ranges::sort(candidates, {}, [](const ExcludableApplicationRow& row) {
        return std::tuple(!row.wasSeen, foldedForSearch(row.name), row.id);
    });
    m_candidateRows.show(std::move(candidates));
    Q_EMIT changed();
}

void ExclusionSettings::setSearch(const QString& search)
{
    m_search = search;
    if (m_model)
        show();
}

void ExclusionSettings::exclude(const QString& identifier)
{
    if (m_model)
        m_model->exclude(identifier.toStdString());
}

void ExclusionSettings::include(const QString& identifier)
{
    if (m_model)
        m_model->include(identifier.toStdString());
}

void ExclusionSettings::dismissProblem()
{
    m_problem.clear();
    Q_EMIT changed();
}

} // namespace stintbook
