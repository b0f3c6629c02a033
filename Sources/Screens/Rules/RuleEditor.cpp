#include "Screens/Rules/RuleEditor.h"

#include <algorithm>
#include <utility>

#include "Base/Try.h"
#include "Rules/RuleExplanation.h"

namespace stintbook {

namespace {

std::vector<RowModel<TargetRow>::Role> targetRoles()
{
    return {RowModel<TargetRow>::role("choiceID", &TargetRow::id),
            RowModel<TargetRow>::role("name", &TargetRow::name),
            RowModel<TargetRow>::role("clientColor", &TargetRow::color)};
}

template <typename ID> QString idText(const std::optional<ID>& id)
{
    return id ? text(id->uuid) : QString();
}

TypedMatch typedMatch(const RuleDraft& draft)
{
    TypedMatch typed;
    for (const auto& [dimension, value] : draft.conditions) {
        if (value.empty())
            continue;
        auto& field = dimension == RuleDimension::application ? typed.application
            : dimension == RuleDimension::domain              ? typed.domain
                                                              : typed.title;
        field = value;
    }
    return typed;
}

bool holdsNothing(const RuleDraft& draft)
{
    return !draft.clientID && std::ranges::all_of(draft.conditions, [](const RuleCondition& condition) {
        return condition.value.empty();
    });
}

} // namespace

RuleEditor::RuleEditor(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_conditions({RowModel<ConditionRow>::role("dimension", &ConditionRow::dimension),
                    RowModel<ConditionRow>::role("value", &ConditionRow::value),
                    RowModel<ConditionRow>::role("explanation", &ConditionRow::explanation)})
    , m_clients(targetRoles())
    , m_projects(targetRoles())
    , m_applications(applicationRoles())
{
}

QString RuleEditor::title() const
{
    if (m_kind == Kind::exclusion)
        return tr("New Exclusion");
    return m_draft && std::holds_alternative<RuleDraft::ExistingRule>(m_draft->origin) ? tr("Edit Rule")
                                                                                       : tr("New Rule");
}

QString RuleEditor::saveText() const
{
    if (m_kind == Kind::exclusion)
        return tr("Add Exclusion");
    return m_draft && std::holds_alternative<RuleDraft::ExistingRule>(m_draft->origin) ? tr("Save Rule")
                                                                                       : tr("Add Rule");
}

QString RuleEditor::clientID() const
{
    return m_draft ? idText(m_draft->clientID) : QString();
}

QString RuleEditor::projectID() const
{
    return m_draft ? idText(m_draft->projectID) : QString();
}

QString RuleEditor::billable() const
{
    if (!m_draft || !m_draft->billableOverride)
        return QStringLiteral("default");
    return *m_draft->billableOverride ? QStringLiteral("yes") : QStringLiteral("no");
}

QString RuleEditor::discardQuestion() const
{
    return m_draft && std::holds_alternative<RuleDraft::ExistingRule>(m_draft->origin)
        ? tr("This rule has changes that are not saved. Save them, or discard them and go on.")
        : m_kind == Kind::exclusion
        ? tr("This exclusion has not been added yet. Add it, or discard it and go on.")
        : tr("This rule has not been added yet. Add it, or discard it and go on.");
}

QString RuleEditor::everyDimensionUsed() const
{
    if (!m_draft)
        return {};
    const auto more = withAnotherCondition(*m_draft);
    return more ? QString() : text(message(more.error()));
}

QString RuleEditor::conditionsExplanation() const
{
    return text(stintbook::conditionsExplanation);
}

void RuleEditor::openNewRule()
{
    open(Kind::rule, RuleDraft::ofNewRule(RuleID::random()));
}

void RuleEditor::openNewExclusion()
{
    open(Kind::exclusion, RuleDraft::ofNewRule(RuleID::random()));
}

void RuleEditor::openExisting(const AttributionRule& rule)
{
    open(Kind::rule, RuleDraft::ofExisting(rule));
}

void RuleEditor::openSuggestion(const RuleSuggestion& suggestion)
{
    auto draft = RuleDraft::ofExisting(rule(suggestion));
    draft.origin = RuleDraft::NewRule{};
    if (!open(Kind::rule, std::move(draft)))
        return;
    m_dayEffect = suggestion.blockCount == 1
        ? tr("It would attribute 1 block of this day.")
        : tr("It would attribute %1 blocks of this day.").arg(suggestion.blockCount);
    Q_EMIT changed();
}

bool RuleEditor::open(Kind kind, RuleDraft draft)
{
    if (m_draft)
        return false;
    m_kind = kind;
    m_opened = draft;
    m_draft = std::move(draft);
    m_conditionIDs.clear();
    for (std::size_t i = 0; i < m_draft->conditions.size(); ++i)
        m_conditionIDs.push_back(++m_lastConditionID);
    m_dayEffect.clear();
    m_effect.clear();
    edited();
    return true;
}

void RuleEditor::setDirectory(const AssignmentDirectory& directory)
{
    m_directory = directory;
    showDraft();
}

void RuleEditor::setApplications(std::vector<ApplicationRow> applications)
{
    m_knownApplications = std::move(applications);
    searchApplications({});
    Q_EMIT changed();
}

void RuleEditor::searchApplications(const QString& words)
{
    m_applications.show(found(m_knownApplications, words));
}

QString RuleEditor::applicationName(const QString& identifier) const
{
    return nameOf(m_knownApplications, identifier.toStdString());
}

QString RuleEditor::applicationNamed(const QString& name) const
{
    const auto found = std::ranges::find_if(m_knownApplications, [&](const ApplicationRow& row) {
        return row.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == m_knownApplications.end() ? name : text(found->id);
}

void RuleEditor::addCondition()
{
    if (!m_draft)
        return;
    if (auto more = withAnotherCondition(*m_draft)) {
        m_draft = *std::move(more);
        m_conditionIDs.push_back(++m_lastConditionID);
        edited();
    }
}

void RuleEditor::removeCondition(int row)
{
    if (!m_draft || row < 0 || static_cast<std::size_t>(row) >= m_draft->conditions.size())
        return;
    m_draft->conditions.erase(m_draft->conditions.begin() + row);
    m_conditionIDs.erase(m_conditionIDs.begin() + row);
    edited();
}

void RuleEditor::setDimension(int row, const QString& dimension)
{
    const auto chosen = fromRawValue<RuleDimension>(dimension.toStdString());
    if (!m_draft || !chosen || row < 0 || static_cast<std::size_t>(row) >= m_draft->conditions.size())
        return;
    auto& condition = m_draft->conditions[static_cast<std::size_t>(row)];
    if (condition.dimension == *chosen)
        return;
    condition = {.dimension = *chosen, .value = {}};
    edited();
}

void RuleEditor::setValue(int row, const QString& value)
{
    if (!m_draft || row < 0 || static_cast<std::size_t>(row) >= m_draft->conditions.size())
        return;
    auto& condition = m_draft->conditions[static_cast<std::size_t>(row)];
    if (std::exchange(condition.value, value.toStdString()) != condition.value)
        edited();
}

void RuleEditor::chooseClient(const QString& id)
{
    const auto chosen = ClientID::parse(id.toStdString());
    if (!m_draft || m_draft->clientID == chosen)
        return;
    m_draft->clientID = chosen;
    m_draft->projectID.reset();
    // One project leaves no choice.
    const auto projects =
        chosen ? m_directory.selectableProjects(*chosen, std::nullopt) : std::vector<Project>();
    if (projects.size() == 1)
        m_draft->projectID = projects.front().id;
    edited();
}

void RuleEditor::chooseProject(const QString& id)
{
    const auto chosen = ProjectID::parse(id.toStdString());
    if (!m_draft || m_draft->projectID == chosen)
        return;
    m_draft->projectID = chosen;
    edited();
}

void RuleEditor::chooseBillable(const QString& billable)
{
    if (!m_draft)
        return;
    m_draft->billableOverride =
        billable == QLatin1String("default") ? std::nullopt : std::optional(billable == QLatin1String("yes"));
    edited();
}

void RuleEditor::edited()
{
    m_problem.clear();
    m_isAskingToDiscard = false;
    showDraft();
    count();
}

void RuleEditor::showDraft()
{
    std::vector<ConditionRow> conditions;
    std::vector<TargetRow> clients;
    std::vector<TargetRow> projects;
    if (m_draft) {
        for (std::size_t i = 0; i < m_draft->conditions.size(); ++i) {
            const auto& [dimension, value] = m_draft->conditions[i];
            conditions.push_back(
                {m_conditionIDs[i], text(rawValue(dimension)), text(value), text(explanation(dimension))});
        }
        for (const auto& client : m_directory.selectableClients(m_draft->clientID))
            clients.push_back(
                {client.id.uuid, text(client.name), client.color ? text(client.color->hex()) : QString()});
        if (m_draft->clientID) {
            for (const auto& project : m_directory.selectableProjects(*m_draft->clientID, m_draft->projectID))
                projects.push_back({project.id.uuid, text(project.name), {}});
        }
    }
    m_conditions.show(std::move(conditions));
    m_clients.show(std::move(clients));
    m_projects.show(std::move(projects));
    Q_EMIT changed();
}

/// One count at a time: an edit that comes meanwhile has the next one.
void RuleEditor::count()
{
    if (m_isCounting)
        return;
    if (m_kind == Kind::exclusion || !m_draft || !rule(*m_draft)) {
        m_effect.clear();
        Q_EMIT changed();
        return;
    }
    m_isCounting = true;
    const auto counted = *m_draft;
    m_context.readings.ask(
        this,
        [counted, calendar = m_context.calendar(), now = m_context.clock.now()](StoreDesk::Workplace& place) {
            return RulePreviewDesk(place.store, calendar).effect(counted, usualPreviewDays, now);
        },
        [this, counted](const RuleEdited<RuleEffect>& effect) {
            m_isCounting = false;
            if (m_draft != counted) {
                count();
                return;
            }
            m_effect = text(effect ? description(*effect) : message(effect.error()));
            Q_EMIT changed();
        },
        [this](const std::string& problem) {
            m_isCounting = false;
            m_effect = text(problem);
            Q_EMIT changed();
        });
    Q_EMIT changed();
}

void RuleEditor::save()
{
    if (!m_draft || std::exchange(m_isSaving, true))
        return;
    m_isAskingToDiscard = false;
    Q_EMIT changed();
    m_context.desk.ask(
        this,
        [draft = *m_draft, kind = m_kind](StoreDesk::Workplace& place) -> RuleEdited<RuleID> {
            RuleBook book(place.store);
            if (kind == Kind::exclusion)
                return book.addExclusion(typedMatch(draft));
            TRY(book.save(draft));
            return draft.id;
        },
        [this, draft = m_draft->id](const RuleEdited<RuleID>& result) {
            m_isSaving = false;
            if (!result)
                return refuse(draft, message(result.error()));
            if (m_draft && m_draft->id == draft)
                close();
            Q_EMIT saved(text(result->uuid));
        },
        [this, draft = m_draft->id](const std::string& problem) {
            m_isSaving = false;
            refuse(draft, problem);
        });
}

void RuleEditor::refuse(RuleID draft, const std::string& problem)
{
    if (!m_draft || m_draft->id != draft)
        return;
    m_problem = text(problem);
    Q_EMIT changed();
}

void RuleEditor::giveUp()
{
    if (!m_draft || m_draft == m_opened || holdsNothing(*m_draft)) {
        close();
        return;
    }
    m_isAskingToDiscard = true;
    Q_EMIT changed();
}

void RuleEditor::discard()
{
    close();
}

void RuleEditor::keepEditing()
{
    m_isAskingToDiscard = false;
    Q_EMIT changed();
}

void RuleEditor::close()
{
    m_draft.reset();
    m_isAskingToDiscard = false;
    m_problem.clear();
    showDraft();
}

} // namespace stintbook
