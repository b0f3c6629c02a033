#pragma once

#include <QAbstractItemModel>
#include <QObject>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <QtQml/qqmlregistration.h>

#include "App/ExcludedApplicationsModel.h"
#include "Screens/Models/RowModel.h"
#include "Screens/Window/Errands.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

struct ExcludableApplicationRow {
    std::string id;
    std::string name;
    /// Whether work in it was recorded.
    bool wasSeen = false;

    friend bool operator==(const ExcludableApplicationRow&, const ExcludableApplicationRow&) = default;
};

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
    /// Those whose name holds what is searched: the ones that were seen first, each part by name.
    QAbstractItemModel* candidates() { return &m_candidateRows; }
    bool isRead() const { return m_model && m_model->isSeeded(); }
    const QString& problem() const { return m_problem; }
    const QString& search() const { return m_search; }
    void setSearch(const QString& search);

    Q_INVOKABLE void exclude(const QString& identifier);
    Q_INVOKABLE void include(const QString& identifier);
    Q_INVOKABLE void dismissProblem();
    /// Reads the list, and what can be chosen.
    void refresh();

Q_SIGNALS:
    void changed();

private:
    void readObserved();
    void openModel();
    void show();

    ScreenContext m_context;
    /// Of the installed applications, by identifier.
    std::map<std::string, std::string> m_names;
    std::vector<ObservedApplication> m_observed;
    QString m_problem;
    QString m_search;
    RowModel<ExcludableApplicationRow> m_excludedRows;
    RowModel<ExcludableApplicationRow> m_candidateRows;
    std::optional<ExcludedApplicationsModel> m_model;
    Listeners::Subscription m_changes;
    Errands m_errands;
};

} // namespace stintbook
