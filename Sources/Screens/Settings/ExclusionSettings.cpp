#include "Screens/Settings/ExclusionSettings.h"

#include <algorithm>

namespace stintbook {

ExclusionSettings::ExclusionSettings(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_excludedRows(applicationRoles())
    , m_candidateRows(applicationRoles())
{
}

void ExclusionSettings::open()
{
    m_context.readings.ask(
        this, [](StoreDesk::Workplace& place) { return knownApplications(place.store); },
        [this](const KnownApplications& known) { showApplications(known); },
        [this](const std::string& problem) { setProblem(text(problem)); });
    refresh();
}

void ExclusionSettings::refresh()
{
    if (m_model)
        return m_model->reload();
    m_context.desk.ask(
        this, [](StoreDesk::Workplace& place) { return std::make_shared<RuleBook>(place.store); },
        [this](std::shared_ptr<RuleBook> book) { follow(std::move(book)); },
        [this](const std::string& problem) { setProblem(text(problem)); });
}

void ExclusionSettings::follow(std::shared_ptr<RuleBook> book)
{
    if (m_model)
        return;
    m_model.emplace(
        m_context.desk.confined(std::move(book)), m_context.main,
        [this](const std::string& identifier) { return nameOf(m_known, identifier).toStdString(); });
    m_changes = m_model->follow([this] { show(); });
    m_model->reload();
}

void ExclusionSettings::showApplications(const KnownApplications& known)
{
    m_known = known.rows;
    setProblem(text(known.problem.value_or("")));
    // With their names.
    if (m_model)
        m_model->reload();
}

void ExclusionSettings::show()
{
    std::vector<ApplicationRow> excluded;
    for (const auto& [identifier, name] : m_model->applications())
        excluded.push_back({identifier, text(name)});
    auto candidates = found(m_known, m_search);
    std::erase_if(candidates, [&](const ApplicationRow& row) {
        return std::ranges::find(excluded, row.id, &ApplicationRow::id) != excluded.end();
    });
    m_excludedRows.show(std::move(excluded));
    m_candidateRows.show(std::move(candidates));
    Q_EMIT changed();
}

QString ExclusionSettings::problem() const
{
    return m_model && m_model->problemMessage() ? text(*m_model->problemMessage()) : m_problem;
}

void ExclusionSettings::setProblem(const QString& problem)
{
    m_problem = problem;
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
    if (m_model)
        m_model->dismissProblem();
    setProblem({});
}

} // namespace stintbook
