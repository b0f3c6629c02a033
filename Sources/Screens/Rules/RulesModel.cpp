#include "Screens/Rules/RulesModel.h"

#include <algorithm>
#include <utility>

#include "App/ClientBook.h"
#include "App/RulePreviewDesk.h"
#include "Base/Try.h"

namespace stintbook {

namespace {

std::vector<RowModel<AttributionRuleRow>::Role> ruleRoles()
{
    using Rows = RowModel<AttributionRuleRow>;
    return {Rows::role("ruleID", &AttributionRuleRow::id),
            Rows::role("number", &AttributionRuleRow::number),
            Rows::role("conditions", &AttributionRuleRow::conditions),
            Rows::role("target", &AttributionRuleRow::target),
            Rows::role("clientColor", &AttributionRuleRow::color),
            Rows::role("billing", &AttributionRuleRow::billing),
            Rows::role("counts", &AttributionRuleRow::counts),
            Rows::role("remark", &AttributionRuleRow::remark),
            Rows::role("badge", &AttributionRuleRow::badge),
            Rows::role("explanation", &AttributionRuleRow::explanation),
            Rows::role("isEnabled", &AttributionRuleRow::isEnabled)};
}

} // namespace

RulesModel::RulesModel(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_editor(context)
    , m_rules(ruleRoles())
    , m_conflicts({RowModel<ConflictRow>::role("otherID", &ConflictRow::id),
                   RowModel<ConflictRow>::role("conditions", &ConflictRow::conditions),
                   RowModel<ConflictRow>::role("explanation", &ConflictRow::explanation),
                   RowModel<ConflictRow>::role("action", &ConflictRow::action)})
    , m_exclusions({RowModel<ExclusionRow>::role("ruleID", &ExclusionRow::id),
                    RowModel<ExclusionRow>::role("conditions", &ExclusionRow::conditions),
                    RowModel<ExclusionRow>::role("isEnabled", &ExclusionRow::isEnabled)})
{
    connect(&m_editor, &RuleEditor::saved, this, [this](const QString& id) {
        if (!m_editor.isExclusion())
            m_selected = UUID::parse(id.toStdString());
        refresh();
    });
}

void RulesModel::setShown(bool isShown)
{
    if (std::exchange(m_isShown, isShown) == isShown)
        return;
    Q_EMIT shownChanged();
    if (!m_isShown)
        return;
    m_isCountStale = true;
    nameApplications();
    if (m_isStale)
        refresh();
    else
        count();
}

QString RulesModel::summary() const
{
    if (!m_content)
        return {};
    const auto count = static_cast<int>(m_content->rules.attributionRules.size());
    return tr("%1  ·  the first rule that matches wins")
        .arg(count == 1 ? tr("1 rule") : tr("%1 rules").arg(count));
}

QString RulesModel::withoutTarget() const
{
    if (!m_content || !m_content->directory.selectableClients(std::nullopt).empty())
        return {};
    return tr("A rule assigns matching work to a client and project. Add a client first.");
}

QString RulesModel::selected() const
{
    return m_selected ? text(*m_selected) : QString();
}

void RulesModel::select(const QString& id)
{
    setSelected(UUID::parse(id.toStdString()));
}

void RulesModel::setSelected(std::optional<UUID> id)
{
    if (std::exchange(m_selected, id) != id)
        tellProblems({}, m_readingProblem);
    showConflicts();
}

std::optional<std::size_t> RulesModel::selectedRow() const
{
    const auto& rows = m_rules.rows();
    const auto found =
        m_selected ? std::ranges::find(rows, *m_selected, &AttributionRuleRow::id) : rows.end();
    if (found == rows.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - rows.begin());
}

int RulesModel::selectedIndex() const
{
    const auto row = selectedRow();
    return row ? static_cast<int>(*row) : -1;
}

void RulesModel::selectNeighbour(int distance)
{
    const auto& rows = m_rules.rows();
    if (rows.empty())
        return;
    const auto row = selectedRow();
    const auto last = static_cast<int>(rows.size()) - 1;
    const auto next = row ? std::clamp(static_cast<int>(*row) + distance, 0, last) : 0;
    setSelected(rows[static_cast<std::size_t>(next)].id);
}

RulesModel::Outcome RulesModel::outcome(const RuleEdited<void>& edited)
{
    return edited ? Outcome{} : Outcome{.selected = {}, .problem = message(edited.error())};
}

void RulesModel::move(const QString& id, int position)
{
    editRules(id, [position](RuleBook& book, RuleID rule) { return outcome(book.move(rule, position)); });
}

void RulesModel::moveSelected(int distance)
{
    const auto row = selectedRow();
    if (!row)
        return;
    const auto position = static_cast<int>(*row) + 1 + distance;
    if (position >= 1 && position <= static_cast<int>(m_rules.rows().size()))
        move(selected(), position);
}

void RulesModel::setEnabled(const QString& id, bool isEnabled)
{
    editRules(id,
              [isEnabled](RuleBook& book, RuleID rule) { return outcome(book.setEnabled(rule, isEnabled)); });
}

void RulesModel::duplicate(const QString& id)
{
    editRules(id, [](RuleBook& book, RuleID rule) -> Outcome {
        const auto copy = book.copy(rule);
        if (!copy)
            return {.selected = {}, .problem = message(copy.error())};
        return {.selected = copy->uuid, .problem = {}};
    });
}

void RulesModel::remove(const QString& id)
{
    editRules(id, [](RuleBook& book, RuleID rule) { return outcome(book.remove(rule)); });
}

void RulesModel::setExclusionEnabled(const QString& id, bool isEnabled)
{
    editRules(id, [isEnabled](RuleBook& book, RuleID rule) {
        return outcome(book.setExclusionEnabled(rule, isEnabled));
    });
}

void RulesModel::removeExclusion(const QString& id)
{
    editRules(id, [](RuleBook& book, RuleID rule) { return outcome(book.removeExclusion(rule)); });
}

void RulesModel::addRule()
{
    m_editor.openNewRule();
}

void RulesModel::editRule(const QString& id)
{
    const auto rule = RuleID::parse(id.toStdString());
    if (!m_content || !rule)
        return;
    const auto& rules = m_content->rules.attributionRules;
    if (const auto found = std::ranges::find(rules, *rule, &AttributionRule::id); found != rules.end())
        m_editor.openExisting(*found);
}

void RulesModel::addExclusion()
{
    m_editor.openNewExclusion();
}

void RulesModel::suggestFor(const QString& dayID, const QString& workID, const QString& titleWords)
{
    const auto day = dayFromID(dayID.toStdString());
    const auto work = UUID::parse(workID.toStdString());
    if (!day || !work)
        return;
    using Suggested = RulePreviewDesk::Suggested<RuleSuggestion>;
    struct Answer {
        Suggested suggestion;
        Stored<AssignmentDirectory> directory;
    };
    nameApplications();
    m_context.desk.ask(
        this,
        [calendar = m_context.calendar(),
         corrected = RulePreviewDesk::CorrectedWork{.day = *day,
                                                    .id = *work,
                                                    .target = {},
                                                    .titleWords = titleWords.isEmpty()
                                                        ? std::nullopt
                                                        : std::optional(titleWords.toStdString())}](
            StoreDesk::Workplace& place) {
            return Answer{RulePreviewDesk(place.store, calendar).suggest(corrected),
                          ClientBook(place.store).directory()};
        },
        [this](const Answer& answer) {
            if (answer.directory)
                m_editor.setDirectory(*answer.directory);
            if (answer.suggestion)
                m_editor.openSuggestion(*answer.suggestion);
            else
                Q_EMIT suggestionRefused(text(message(answer.suggestion.error())));
        },
        [this](const std::string& problem) { Q_EMIT suggestionRefused(text(problem)); });
}

void RulesModel::dismissProblem()
{
    tellProblems({}, {});
}

void RulesModel::refresh()
{
    m_isStale = true;
    if (m_isShown)
        edit({});
}

void RulesModel::editRules(const QString& id, std::function<Outcome(RuleBook&, RuleID)> work)
{
    if (const auto rule = RuleID::parse(id.toStdString()))
        edit([rule = *rule, work = std::move(work)](RuleBook& book) { return work(book, rule); });
}

Stored<RulesContent> RulesModel::read(OpenedStore& store)
{
    RuleBook book(store);
    RulesContent content;
    content.rules = TRY(book.list());
    content.conflicts = TRY(book.conflicts());
    content.directory = TRY(ClientBook(store).directory());
    return content;
}

void RulesModel::edit(Edit edit)
{
    struct Answer {
        Outcome outcome;
        std::shared_ptr<const RulesContent> content;
        QString problem;
    };
    const bool isEdit = edit != nullptr;
    m_isStale = false;
    m_context.desk.ask(
        this,
        [edit = std::move(edit)](StoreDesk::Workplace& place) -> Answer {
            RuleBook book(place.store);
            Answer answer{.outcome = edit ? edit(book) : Outcome{}, .content = nullptr, .problem = {}};
            if (auto content = read(place.store))
                answer.content = std::make_shared<const RulesContent>(*std::move(content));
            else
                answer.problem = tr("Rules could not be read from the local store.");
            return answer;
        },
        [this, isEdit](const Answer& answer) {
            tellProblems(isEdit ? text(answer.outcome.problem.value_or("")) : m_refusal, answer.problem);
            if (answer.outcome.selected)
                m_selected = answer.outcome.selected;
            if (answer.content)
                show(answer.content);
            else
                m_isStale = true;
        },
        [this](const std::string& problem) {
            m_isStale = true;
            tellProblems(m_refusal, text(problem));
        });
}

void RulesModel::show(std::shared_ptr<const RulesContent> content)
{
    // What captures record meanwhile is counted when the screen is shown again.
    const bool isChanged = !m_content || m_content->rules.attributionRules != content->rules.attributionRules
        || m_content->rules.exclusionRules != content->rules.exclusionRules
        || m_content->directory.clients() != content->directory.clients()
        || m_content->directory.projects() != content->directory.projects();
    m_content = std::move(content);
    m_editor.setDirectory(m_content->directory);
    showRows();
    if (isChanged)
        m_isCountStale = true;
    count();
}

void RulesModel::showRows()
{
    if (m_content) {
        m_rules.show(ruleRows(*m_content, m_summaries, m_names));
        m_exclusions.show(exclusionRows(*m_content, m_names));
    }
    if (!selectedRow())
        m_selected.reset();
    Q_EMIT changed();
    showConflicts();
}

void RulesModel::showConflicts()
{
    m_conflicts.show(m_content && m_selected ? conflictRows(*m_content, RuleID{*m_selected}, m_names)
                                             : std::vector<ConflictRow>());
    Q_EMIT selectionChanged();
}

void RulesModel::count()
{
    if (!m_isShown || m_isCounting || !std::exchange(m_isCountStale, false))
        return;
    m_isCounting = true;
    m_context.readings.ask(
        this,
        [calendar = m_context.calendar(),
         now = m_context.clock.now()](StoreDesk::Workplace& place) -> Stored<RuleSummaries> {
            const auto preview = TRY(RulePreviewDesk(place.store, calendar).preview(usualPreviewDays, now));
            RuleSummaries summaries;
            for (const auto& rule : preview.rules)
                summaries.emplace(rule.id, previewSummary(preview, rule.id, usualPreviewDays));
            return summaries;
        },
        [this](Stored<RuleSummaries> summaries) {
            m_isCounting = false;
            const bool isCounted = summaries.has_value();
            if (isCounted)
                m_summaries = *std::move(summaries);
            else
                tellProblems(m_refusal, text(message(summaries.error())));
            showRows();
            count();
            if (!isCounted && !m_isCounting)
                m_isCountStale = true;
        },
        [this](const std::string& problem) {
            m_isCounting = false;
            // Tried again when the rules are read or shown the next time.
            m_isCountStale = true;
            tellProblems(m_refusal, text(problem));
        });
}

void RulesModel::nameApplications()
{
    m_context.readings.ask(
        this, [](StoreDesk::Workplace& place) { return knownApplications(place.store); },
        [this](const KnownApplications& applications) {
            m_editor.setApplications(applications.rows);
            m_names.clear();
            for (const auto& application : applications.rows)
                m_names.emplace(application.id, application.name.toStdString());
            showRows();
        },
        // Identifiers stand in for names; that the store cannot be read is told with the rules.
        [](const std::string&) {});
}

void RulesModel::tellProblems(const QString& refusal, const QString& readingProblem)
{
    m_refusal = refusal;
    m_readingProblem = readingProblem;
    Q_EMIT changed();
}

} // namespace stintbook
