#pragma once

#include <QAbstractItemModel>
#include <QObject>
#include <memory>
#include <optional>

#include <QtQml/qqmlregistration.h>

#include "App/ExcludedApplicationsModel.h"
#include "Screens/Models/ApplicationRows.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// The excluded applications, and those that can be.
class ExclusionSettings : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(QAbstractItemModel* excluded READ excluded CONSTANT)
    Q_PROPERTY(QAbstractItemModel* candidates READ candidates CONSTANT)
    Q_PROPERTY(bool isRead READ isRead NOTIFY changed)
    Q_PROPERTY(QString problem READ problem NOTIFY changed)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY changed)

public:
    explicit ExclusionSettings(const ScreenContext& context, QObject* parent = nullptr);

    QAbstractItemModel* excluded() { return &m_excludedRows; }
    /// Those that hold what is searched: the ones that were seen first, each part by name.
    QAbstractItemModel* candidates() { return &m_candidateRows; }
    bool isRead() const { return m_model && m_model->isSeeded(); }
    /// Of the list, else of what can be chosen.
    QString problem() const;
    const QString& search() const { return m_search; }
    void setSearch(const QString& search);

    Q_INVOKABLE void exclude(const QString& identifier);
    Q_INVOKABLE void include(const QString& identifier);
    Q_INVOKABLE void dismissProblem();
    /// Reads what can be chosen, and the list.
    void open();
    /// Reads the list.
    void refresh();

Q_SIGNALS:
    void changed();

private:
    void follow(std::shared_ptr<RuleBook> book);
    void showApplications(const KnownApplications& known);
    void show();
    void setProblem(const QString& problem);

    ScreenContext m_context;
    std::vector<ApplicationRow> m_known;
    QString m_problem;
    QString m_search;
    RowModel<ApplicationRow> m_excludedRows;
    RowModel<ApplicationRow> m_candidateRows;
    std::optional<ExcludedApplicationsModel> m_model;
    Listeners::Subscription m_changes;
};

} // namespace stintbook
