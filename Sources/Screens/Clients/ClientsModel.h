#pragma once

#include <QObject>
#include <QVariantMap>
#include <functional>
#include <memory>
#include <optional>

#include <QtQml/qqmlregistration.h>

#include "App/ClientBook.h"
#include "Screens/Clients/ClientRows.h"
#include "Screens/Models/RowModel.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// The clients with their projects, and the edits of them. Nothing is read until the screen is shown.
///
/// Edits name the field that they come from; the sentence of one that was refused stands in `complaints` under that
/// name until the field is edited again or another client is selected.
class ClientsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(bool isShown READ isShown WRITE setShown NOTIFY shownChanged)
    Q_PROPERTY(bool isRead READ isRead NOTIFY changed)
    Q_PROPERTY(QString summary READ summary NOTIFY changed)
    Q_PROPERTY(QString currency READ currency NOTIFY changed)
    Q_PROPERTY(QString words READ words WRITE search NOTIFY changed)
    Q_PROPERTY(QString problem READ problem NOTIFY complaintsChanged)
    Q_PROPERTY(QVariantMap complaints READ complaints NOTIFY complaintsChanged)
    Q_PROPERTY(QString selected READ selected WRITE select NOTIFY selectionChanged)
    Q_PROPERTY(int selectedIndex READ selectedIndex NOTIFY selectionChanged)
    Q_PROPERTY(QVariantMap inspected READ inspected NOTIFY selectionChanged)
    Q_PROPERTY(QAbstractItemModel* clients READ clients CONSTANT)
    Q_PROPERTY(QAbstractItemModel* projects READ projects CONSTANT)
    Q_PROPERTY(QAbstractItemModel* clientRoundings READ clientRoundings CONSTANT)
    Q_PROPERTY(QAbstractItemModel* projectRoundings READ projectRoundings CONSTANT)

public:
    explicit ClientsModel(const ScreenContext& context, QObject* parent = nullptr);

    bool isShown() const { return m_isShown; }
    void setShown(bool isShown);
    /// Whether there is anything to show yet, be it that there is no client.
    bool isRead() const { return m_shown != nullptr; }
    QString summary() const;
    /// The ledger's; empty without one.
    QString currency() const;
    const QString& words() const { return m_words; }
    void search(const QString& words);
    /// What is wrong with all of the screen, as that nothing can be read.
    const QString& problem() const { return m_problem; }
    const QVariantMap& complaints() const { return m_complaints; }
    QString selected() const;
    void select(const QString& id);
    /// -1 without a selection.
    int selectedIndex() const;
    /// The row of the selected client, by the roles' names; empty without a selection.
    QVariantMap inspected() const;
    QAbstractItemModel* clients() { return &m_clients; }
    /// Of the selected client.
    QAbstractItemModel* projects() { return &m_projects; }
    QAbstractItemModel* clientRoundings() { return &m_clientRoundings; }
    QAbstractItemModel* projectRoundings() { return &m_projectRoundings; }

    Q_INVOKABLE void selectNeighbour(int distance);
    /// Why the text is no hourly rate; empty when it is one, or none at all.
    Q_INVOKABLE QString rateComplaint(const QString& rate) const;

    Q_INVOKABLE void addClient(const QString& name, const QString& color);
    // Of the selected client.
    Q_INVOKABLE void renameClient(const QString& name);
    Q_INVOKABLE void colorClient(const QString& color);
    Q_INVOKABLE void setClientRate(const QString& rate);
    Q_INVOKABLE void setClientRounding(const QString& rounding);
    Q_INVOKABLE void archiveClient(bool isArchived);
    Q_INVOKABLE void deleteClient();

    /// Under the selected client.
    Q_INVOKABLE void addProject(const QString& name);
    Q_INVOKABLE void renameProject(const QString& projectID, const QString& name);
    Q_INVOKABLE void setProjectBillable(const QString& projectID, bool isBillable);
    Q_INVOKABLE void setProjectRate(const QString& projectID, const QString& rate);
    Q_INVOKABLE void setProjectRounding(const QString& projectID, const QString& rounding);
    Q_INVOKABLE void archiveProject(const QString& projectID, bool isArchived);
    Q_INVOKABLE void deleteProject(const QString& projectID);

    Q_INVOKABLE void dismissProblem() { setProblem({}); }
    Q_INVOKABLE void dismissComplaint(const QString& field);
    /// Reads what is shown again.
    Q_INVOKABLE void refresh();

Q_SIGNALS:
    void shownChanged();
    void changed();
    void complaintsChanged();
    void selectionChanged();
    void clientAdded();
    void projectAdded(const QString& projectID);

private:
    struct Shown;
    /// What became of an edit: the entry that it made, if any, or why it was refused.
    struct Outcome {
        std::optional<UUID> made;
        std::optional<std::string> problem;
    };
    using Edit = std::function<Outcome(ClientBook&)>;
    using Done = void (ClientsModel::*)(const UUID& made);

    static Outcome outcome(const ClientEdited<void>& edited);
    template <typename ID> static Outcome outcome(const ClientEdited<ID>& made);

    /// Does the edit and reads all, or complains at the field.
    void edit(const QString& field, Edit edit, Done done = nullptr);
    void editClient(const QString& field, std::function<ClientEdited<void>(ClientBook&, ClientID)> work);
    void editProject(const QString& projectID, const char* field,
                     std::function<ClientEdited<void>(ClientBook&, ProjectID)> work);
    void show(std::shared_ptr<const Shown> shown);
    void showRows();
    void complain(const QString& field, const std::optional<std::string>& problem);
    void setProblem(const QString& problem);
    void clientWasAdded(const UUID& id);
    void projectWasAdded(const UUID& id);
    void setSelected(std::optional<UUID> id);
    std::optional<std::size_t> selectedRow() const;

    ScreenContext m_context;
    bool m_isShown = false;
    bool m_isStale = true;
    QString m_words;
    QString m_problem;
    QVariantMap m_complaints;
    std::optional<UUID> m_selected;
    std::shared_ptr<const Shown> m_shown;
    RowModel<ClientRow> m_clients;
    RowModel<ProjectRow> m_projects;
    RowModel<RoundingRow> m_clientRoundings;
    RowModel<RoundingRow> m_projectRoundings;
};

} // namespace stintbook
