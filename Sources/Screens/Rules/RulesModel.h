#pragma once

#include <QObject>
#include <QVariantMap>
#include <functional>
#include <memory>
#include <optional>

#include <QtQml/qqmlregistration.h>

#include "Screens/Models/RowModel.h"
#include "Screens/Rules/RuleEditor.h"
#include "Screens/Rules/RuleRows.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// The ordered rules with what each does to recent work, the exclusions beside them, and the editor of both. Nothing
/// is read until the screen is shown; what the rules do is counted when it is shown, and when they have changed.
///
/// To make a rule from work, call `suggestFor`: the editor opens with the suggestion, or `suggestionRefused` tells why
/// there is none. The window shows the editor over whatever screen it was asked from.
class RulesModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(bool isShown READ isShown WRITE setShown NOTIFY shownChanged)
    Q_PROPERTY(bool isRead READ isRead NOTIFY changed)
    Q_PROPERTY(QString summary READ summary NOTIFY changed)
    Q_PROPERTY(QString withoutTarget READ withoutTarget NOTIFY changed)
    Q_PROPERTY(QString problem READ problem NOTIFY changed)
    Q_PROPERTY(QString selected READ selected WRITE select NOTIFY selectionChanged)
    Q_PROPERTY(int selectedIndex READ selectedIndex NOTIFY selectionChanged)
    Q_PROPERTY(QAbstractItemModel* rules READ rules CONSTANT)
    Q_PROPERTY(QAbstractItemModel* conflicts READ conflicts CONSTANT)
    Q_PROPERTY(QAbstractItemModel* exclusions READ exclusions CONSTANT)
    Q_PROPERTY(stintbook::RuleEditor* editor READ editor CONSTANT)

public:
    explicit RulesModel(const ScreenContext& context, QObject* parent = nullptr);

    bool isShown() const { return m_isShown; }
    void setShown(bool isShown);
    bool isRead() const { return m_content != nullptr; }
    QString summary() const;
    /// Why no rule can be made yet; empty when one can.
    QString withoutTarget() const;
    /// Of the last edit that was refused, else of reading.
    const QString& problem() const { return m_refusal.isEmpty() ? m_readingProblem : m_refusal; }
    QString selected() const;
    void select(const QString& id);
    /// -1 without a selection.
    int selectedIndex() const;
    QAbstractItemModel* rules() { return &m_rules; }
    /// Of the selected rule.
    QAbstractItemModel* conflicts() { return &m_conflicts; }
    QAbstractItemModel* exclusions() { return &m_exclusions; }
    RuleEditor* editor() { return &m_editor; }

    Q_INVOKABLE void selectNeighbour(int distance);
    /// To a place counted from 1.
    Q_INVOKABLE void move(const QString& id, int position);
    Q_INVOKABLE void moveSelected(int distance);
    Q_INVOKABLE void setEnabled(const QString& id, bool isEnabled);
    Q_INVOKABLE void duplicate(const QString& id);
    Q_INVOKABLE void remove(const QString& id);
    Q_INVOKABLE void setExclusionEnabled(const QString& id, bool isEnabled);
    Q_INVOKABLE void removeExclusion(const QString& id);
    Q_INVOKABLE void addRule();
    Q_INVOKABLE void editRule(const QString& id);
    Q_INVOKABLE void addExclusion();
    /// Opens the editor with a rule that would have assigned this work: a block or an item of the day, by their
    /// identifiers. `titleWords` are what its user marked in a title; empty otherwise.
    Q_INVOKABLE void suggestFor(const QString& dayID, const QString& workID, const QString& titleWords);
    Q_INVOKABLE void dismissProblem();
    /// Reads what is shown again.
    void refresh();

Q_SIGNALS:
    void shownChanged();
    void changed();
    void selectionChanged();
    void suggestionRefused(const QString& sentence);

private:
    /// The sentence of a refused edit, or what to select after it.
    struct Outcome {
        std::optional<UUID> selected;
        std::optional<std::string> problem;
    };
    using Edit = std::function<Outcome(RuleBook&)>;

    static Outcome outcome(const RuleEdited<void>& edited);
    static Stored<RulesContent> read(OpenedStore& store);
    /// Does the edit, where there is one, and reads the rules. Reading alone leaves what was refused before.
    void edit(Edit edit);
    void editRules(const QString& id, std::function<Outcome(RuleBook&, RuleID)> work);
    void show(std::shared_ptr<const RulesContent> content);
    void showRows();
    void showConflicts();
    /// How much the rules attribute, unless that is known of these rules.
    void count();
    void nameApplications();
    void setSelected(std::optional<UUID> id);
    void tellProblems(const QString& refusal, const QString& readingProblem);
    std::optional<std::size_t> selectedRow() const;

    ScreenContext m_context;
    bool m_isShown = false;
    bool m_isStale = true;
    bool m_isCounting = false;
    bool m_isCountStale = true;
    QString m_refusal;
    QString m_readingProblem;
    std::optional<UUID> m_selected;
    std::shared_ptr<const RulesContent> m_content;
    RuleSummaries m_summaries;
    ApplicationNames m_names;
    RuleEditor m_editor;
    RowModel<AttributionRuleRow> m_rules;
    RowModel<ConflictRow> m_conflicts;
    RowModel<ExclusionRow> m_exclusions;
};

} // namespace stintbook
