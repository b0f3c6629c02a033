#pragma once

#include <QObject>
#include <QVariantMap>
#include <functional>
#include <map>
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
/// name while the client that it is about is selected, until the field is edited again or the client is left.
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
    QVariantMap complaints() const;
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
    Q_INVOKABLE void renameClient(const QString& clientID, const QString& name);
    Q_INVOKABLE void colorClient(const QString& clientID, const QString& color);
    Q_INVOKABLE void setClientRate(const QString& clientID, const QString& rate);
    Q_INVOKABLE void setClientRounding(const QString& clientID, const QString& rounding);
    Q_INVOKABLE void archiveClient(const QString& clientID, bool isArchived);
    Q_INVOKABLE void deleteClient(const QString& clientID);

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
    void refresh();

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
    /// Where the sentence of a refusal stands.
    struct Field {
        /// None for a client that is yet to be made.
        std::optional<UUID> clientID;
        QString name;
    };

    static Outcome outcome(const ClientEdited<void>& edited);
    template <typename ID> static Outcome outcome(const ClientEdited<ID>& made);

    void edit(const Field& field, Edit work);
    void editClient(const QString& clientID, const char* field,
                    std::function<ClientEdited<void>(ClientBook&, ClientID)> work);
    void editProject(const QString& projectID, const char* field,
                     std::function<ClientEdited<void>(ClientBook&, ProjectID)> work);
    /// Like an edit, but not while another entry is being added.
    void add(const Field& field, Edit work, std::function<void(const UUID& made)> done);
    /// Does the work and shows all as it is then, and what became of the work.
    void ask(Edit work, const std::function<void(const Outcome&)>& done);
    void show(std::shared_ptr<const Shown> shown);
    void showRows();
    void complain(const Field& field, const std::optional<std::string>& problem);
    void setProblem(const QString& problem);
    void setSelected(std::optional<UUID> id);
    std::optional<std::size_t> selectedRow() const;

    ScreenContext m_context;
    bool m_isShown = false;
    bool m_isStale = true;
    QString m_words;
    QString m_problem;
    /// By the client, then by the field.
    std::map<std::optional<UUID>, QVariantMap> m_complaints;
    bool m_isAdding = false;
    std::optional<UUID> m_selected;
    std::shared_ptr<const Shown> m_shown;
    RowModel<ClientRow> m_clients;
    RowModel<ProjectRow> m_projects;
    RowModel<RoundingRow> m_clientRoundings;
    RowModel<RoundingRow> m_projectRoundings;
};

} // namespace stintbook
