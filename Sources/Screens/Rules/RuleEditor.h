#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include <QtQml/qqmlregistration.h>

#include "App/RulePreviewDesk.h"
#include "Rules/RuleDraft.h"
#include "Screens/Models/ApplicationRows.h"
#include "Screens/Models/RowModel.h"
#include "Screens/Rules/RuleRows.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// A condition in the editor.
struct ConditionRow {
    std::int64_t id = 0;
    QString dimension;
    QString value;
    QString explanation;

    friend bool operator==(const ConditionRow&, const ConditionRow&) = default;
};

/// A client or project to choose.
struct TargetRow {
    UUID id;
    QString name;
    QString color;

    friend bool operator==(const TargetRow&, const TargetRow&) = default;
};

/// What is edited: a rule, new or not, or the conditions under which work is kept out of the record.
///
/// Open from the moment it has a draft until that is stored or given up. While it is open, what storing the draft would
/// change of the recent work is counted anew after every edit.
class RuleEditor : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(bool isExclusion READ isExclusion NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString saveText READ saveText NOTIFY changed)
    Q_PROPERTY(QString clientID READ clientID WRITE chooseClient NOTIFY changed)
    Q_PROPERTY(QString projectID READ projectID WRITE chooseProject NOTIFY changed)
    Q_PROPERTY(QString billable READ billable WRITE chooseBillable NOTIFY changed)
    Q_PROPERTY(QString dayEffect READ dayEffect NOTIFY changed)
    Q_PROPERTY(QString effect READ effect NOTIFY changed)
    Q_PROPERTY(bool isCounting READ isCounting NOTIFY changed)
    Q_PROPERTY(bool isAskingToDiscard READ isAskingToDiscard NOTIFY changed)
    Q_PROPERTY(QString discardQuestion READ discardQuestion NOTIFY changed)
    Q_PROPERTY(QString problem READ problem NOTIFY changed)
    Q_PROPERTY(QString everyDimensionUsed READ everyDimensionUsed NOTIFY changed)
    Q_PROPERTY(QString conditionsExplanation READ conditionsExplanation CONSTANT)
    Q_PROPERTY(QAbstractItemModel* conditions READ conditions CONSTANT)
    Q_PROPERTY(QAbstractItemModel* clients READ clients CONSTANT)
    Q_PROPERTY(QAbstractItemModel* projects READ projects CONSTANT)
    Q_PROPERTY(QAbstractItemModel* applications READ applications CONSTANT)

public:
    explicit RuleEditor(const ScreenContext& context, QObject* parent = nullptr);

    bool isOpen() const { return m_draft.has_value(); }
    bool isExclusion() const { return m_kind == Kind::exclusion; }
    QString title() const;
    QString saveText() const;
    QString clientID() const;
    QString projectID() const;
    /// "yes", "no", or "default" where the project's default applies.
    QString billable() const;
    /// What the suggestion would attribute of the day that it was made from; empty for other drafts.
    const QString& dayEffect() const { return m_dayEffect; }
    /// Or why that is not known.
    const QString& effect() const { return m_effect; }
    bool isCounting() const { return m_isCounting; }
    bool isAskingToDiscard() const { return m_isAskingToDiscard; }
    QString discardQuestion() const;
    const QString& problem() const { return m_problem; }
    /// Why no condition can be added; empty when one can.
    QString everyDimensionUsed() const;
    QString conditionsExplanation() const;
    QAbstractItemModel* conditions() { return &m_conditions; }
    QAbstractItemModel* clients() { return &m_clients; }
    QAbstractItemModel* projects() { return &m_projects; }
    QAbstractItemModel* applications() { return &m_applications; }

    /// Opens the editor, unless another draft is still open.
    void openNewRule();
    void openNewExclusion();
    void openExisting(const AttributionRule& rule);
    void openSuggestion(const RuleSuggestion& suggestion);
    void setDirectory(const AssignmentDirectory& directory);
    void setApplications(std::vector<ApplicationRow> applications);

    Q_INVOKABLE void addCondition();
    Q_INVOKABLE void removeCondition(int row);
    Q_INVOKABLE void setDimension(int row, const QString& dimension);
    Q_INVOKABLE void setValue(int row, const QString& value);
    /// Leaves those in `applications` whose name or identifier contains the words.
    Q_INVOKABLE void searchApplications(const QString& words);
    /// The identifier itself where no name is known for it.
    Q_INVOKABLE QString applicationName(const QString& identifier) const;
    /// The other way round: the application of that name, else the text is an identifier.
    Q_INVOKABLE QString applicationNamed(const QString& name) const;
    void chooseClient(const QString& id);
    void chooseProject(const QString& id);
    void chooseBillable(const QString& billable);
    Q_INVOKABLE void save();
    /// Closes the editor, or asks first where something would be lost.
    Q_INVOKABLE void giveUp();
    Q_INVOKABLE void discard();
    Q_INVOKABLE void keepEditing();

Q_SIGNALS:
    void changed();
    void saved(const QString& ruleID);

private:
    enum class Kind { rule, exclusion };

    /// False while another draft is open.
    bool open(Kind kind, RuleDraft draft);
    /// The draft is another than before.
    void edited();
    /// Says why a draft was not stored, if it is still the one that is open.
    void refuse(RuleID draft, const std::string& problem);
    void showDraft();
    void close();
    void count();

    ScreenContext m_context;
    Kind m_kind = Kind::rule;
    std::optional<RuleDraft> m_draft;
    /// As it was opened.
    RuleDraft m_opened;
    /// Of the conditions, in their order.
    std::vector<std::int64_t> m_conditionIDs;
    std::int64_t m_lastConditionID = 0;
    AssignmentDirectory m_directory;
    QString m_dayEffect;
    QString m_effect;
    QString m_problem;
    bool m_isCounting = false;
    bool m_isSaving = false;
    bool m_isAskingToDiscard = false;
    RowModel<ConditionRow> m_conditions;
    RowModel<TargetRow> m_clients;
    RowModel<TargetRow> m_projects;
    std::vector<ApplicationRow> m_knownApplications;
    RowModel<ApplicationRow> m_applications;
};

} // namespace stintbook
