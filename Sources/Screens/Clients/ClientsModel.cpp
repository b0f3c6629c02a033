#include "Screens/Clients/ClientsModel.h"

#include <algorithm>
#include <utility>

#include "App/BillingDesk.h"
#include "Base/Try.h"

namespace stintbook {

/// The client list as it was read.
struct ClientsModel::Shown {
    std::vector<ListedClient> clients;
    std::vector<ListedProject> projects;
    BillingSettings ledger;
};

namespace {

/// What a field holds: a blank one nothing.
std::optional<std::string> typed(const QString& words)
{
    return words.trimmed().isEmpty() ? std::nullopt : std::optional(words.toStdString());
}

std::vector<RowModel<RoundingRow>::Role> roundingRoles()
{
    return {RowModel<RoundingRow>::role("choiceID", &RoundingRow::id),
            RowModel<RoundingRow>::role("name", &RoundingRow::name)};
}

} // namespace

ClientsModel::ClientsModel(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_clients({RowModel<ClientRow>::role("clientID", &ClientRow::id),
                 RowModel<ClientRow>::role("name", &ClientRow::name),
                 RowModel<ClientRow>::role("clientColor", &ClientRow::color),
                 RowModel<ClientRow>::role("rate", &ClientRow::rate),
                 RowModel<ClientRow>::role("rounding", &ClientRow::rounding),
                 RowModel<ClientRow>::role("summary", &ClientRow::summary),
                 RowModel<ClientRow>::role("references", &ClientRow::references),
                 RowModel<ClientRow>::role("isArchived", &ClientRow::isArchived)})
    , m_projects({RowModel<ProjectRow>::role("projectID", &ProjectRow::id),
                  RowModel<ProjectRow>::role("name", &ProjectRow::name),
                  RowModel<ProjectRow>::role("rate", &ProjectRow::rate),
                  RowModel<ProjectRow>::role("rounding", &ProjectRow::rounding),
                  RowModel<ProjectRow>::role("summary", &ProjectRow::summary),
                  RowModel<ProjectRow>::role("references", &ProjectRow::references),
                  RowModel<ProjectRow>::role("isBillable", &ProjectRow::isBillable),
                  RowModel<ProjectRow>::role("isArchived", &ProjectRow::isArchived)})
    , m_clientRoundings(roundingRoles())
    , m_projectRoundings(roundingRoles())
{
}

void ClientsModel::setShown(bool isShown)
{
    if (std::exchange(m_isShown, isShown) == isShown)
        return;
    Q_EMIT shownChanged();
    if (m_isShown && m_isStale)
        refresh();
}

QString ClientsModel::summary() const
{
    if (!m_shown)
        return {};
    const auto archived = std::ranges::count_if(
        m_shown->clients, [](const ListedClient& listed) { return listed.client.isArchived; });
    const auto current = static_cast<int>(m_shown->clients.size()) - static_cast<int>(archived);
    const auto clients = current == 1 ? tr("1 client") : tr("%1 clients").arg(current);
    return archived == 0 ? clients : tr("%1  ·  %2 archived").arg(clients).arg(archived);
}

QString ClientsModel::currency() const
{
    return m_shown && m_shown->ledger.currency ? text(m_shown->ledger.currency->code()) : QString();
}

void ClientsModel::search(const QString& words)
{
    if (std::exchange(m_words, words) == words)
        return;
    showRows();
}

QString ClientsModel::selected() const
{
    return m_selected ? text(*m_selected) : QString();
}

QVariantMap ClientsModel::complaints() const
{
    QVariantMap complaints;
    for (const auto& clientID : {std::optional<UUID>(), m_selected}) {
        if (const auto found = m_complaints.find(clientID); found != m_complaints.end())
            complaints.insert(found->second);
    }
    return complaints;
}

void ClientsModel::select(const QString& id)
{
    setSelected(UUID::parse(id.toStdString()));
}

void ClientsModel::setSelected(std::optional<UUID> id)
{
    if (m_selected != id) {
        m_complaints.erase(std::exchange(m_selected, id));
        Q_EMIT complaintsChanged();
    }
    showRows();
}

std::optional<std::size_t> ClientsModel::selectedRow() const
{
    const auto& rows = m_clients.rows();
    const auto found = m_selected ? std::ranges::find(rows, *m_selected, &ClientRow::id) : rows.end();
    if (found == rows.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - rows.begin());
}

int ClientsModel::selectedIndex() const
{
    const auto row = selectedRow();
    return row ? static_cast<int>(*row) : -1;
}

QVariantMap ClientsModel::inspected() const
{
    const auto row = selectedRow();
    return row ? m_clients.values(*row) : QVariantMap();
}

void ClientsModel::selectNeighbour(int distance)
{
    const auto& rows = m_clients.rows();
    if (rows.empty())
        return;
    const auto row = selectedRow();
    const auto last = static_cast<int>(rows.size()) - 1;
    const auto next = row ? std::clamp(static_cast<int>(*row) + distance, 0, last) : 0;
    setSelected(rows[static_cast<std::size_t>(next)].id);
}

QString ClientsModel::rateComplaint(const QString& rate) const
{
    const auto checked = validateRate(rate.toStdString());
    return checked ? QString() : text(message(checked.error()));
}

ClientsModel::Outcome ClientsModel::outcome(const ClientEdited<void>& edited)
{
    return edited ? Outcome{} : Outcome{.made = {}, .problem = message(edited.error())};
}

template <typename ID> ClientsModel::Outcome ClientsModel::outcome(const ClientEdited<ID>& made)
{
    return made ? Outcome{.made = made->uuid, .problem = {}}
                : Outcome{.made = {}, .problem = message(made.error())};
}

void ClientsModel::addClient(const QString& name, const QString& color)
{
    const ClientBook::NewClient client{
        .name = name.toStdString(), .color = typed(color), .rate = {}, .rounding = {}};
    add(
        {.clientID = {}, .name = QStringLiteral("newClient")},
        [client](ClientBook& book) { return outcome(book.addClient(client)); },
        [this](const UUID& id) {
            // The words that were searched for would hide it.
            m_words.clear();
            setSelected(id);
            Q_EMIT clientAdded();
        });
}

void ClientsModel::renameClient(const QString& clientID, const QString& name)
{
    editClient(clientID, "name", [name = name.toStdString()](ClientBook& book, ClientID id) {
        return book.renameClient(id, name);
    });
}

void ClientsModel::colorClient(const QString& clientID, const QString& color)
{
    editClient(clientID, "color",
               [color = typed(color)](ClientBook& book, ClientID id) { return book.colorClient(id, color); });
}

void ClientsModel::setClientRate(const QString& clientID, const QString& rate)
{
    editClient(clientID, "rate",
               [rate = typed(rate)](ClientBook& book, ClientID id) { return book.setClientRate(id, rate); });
}

void ClientsModel::setClientRounding(const QString& clientID, const QString& rounding)
{
    editClient(clientID, "rounding",
               [policy = fromRawValue<RoundingPolicy>(rounding.toStdString())](
                   ClientBook& book, ClientID id) { return book.setClientRounding(id, policy); });
}

void ClientsModel::archiveClient(const QString& clientID, bool isArchived)
{
    editClient(clientID, "remove",
               [isArchived](ClientBook& book, ClientID id) { return book.archiveClient(id, isArchived); });
}

void ClientsModel::deleteClient(const QString& clientID)
{
    editClient(clientID, "remove", [](ClientBook& book, ClientID id) { return book.deleteClient(id); });
}

void ClientsModel::addProject(const QString& name)
{
    if (!m_selected)
        return;
    const ClientBook::NewProject project{
        .clientID = {*m_selected}, .name = name.toStdString(), .rate = {}, .rounding = {}};
    add(
        {.clientID = m_selected, .name = QStringLiteral("newProject")},
        [project](ClientBook& book) { return outcome(book.addProject(project)); },
        [this, client = m_selected](const UUID& id) {
            if (m_selected == client)
                Q_EMIT projectAdded(text(id));
        });
}

void ClientsModel::renameProject(const QString& projectID, const QString& name)
{
    editProject(projectID, "name", [name = name.toStdString()](ClientBook& book, ProjectID id) {
        return book.renameProject(id, name);
    });
}

void ClientsModel::setProjectBillable(const QString& projectID, bool isBillable)
{
    editProject(projectID, "billable", [isBillable](ClientBook& book, ProjectID id) {
        return book.setProjectBillable(id, isBillable);
    });
}

void ClientsModel::setProjectRate(const QString& projectID, const QString& rate)
{
    editProject(projectID, "rate", [rate = typed(rate)](ClientBook& book, ProjectID id) {
        return book.setProjectRate(id, rate);
    });
}

void ClientsModel::setProjectRounding(const QString& projectID, const QString& rounding)
{
    editProject(projectID, "rounding",
                [policy = fromRawValue<RoundingPolicy>(rounding.toStdString())](
                    ClientBook& book, ProjectID id) { return book.setProjectRounding(id, policy); });
}

void ClientsModel::archiveProject(const QString& projectID, bool isArchived)
{
    editProject(projectID, "remove",
                [isArchived](ClientBook& book, ProjectID id) { return book.archiveProject(id, isArchived); });
}

void ClientsModel::deleteProject(const QString& projectID)
{
    editProject(projectID, "remove", [](ClientBook& book, ProjectID id) { return book.deleteProject(id); });
}

void ClientsModel::dismissComplaint(const QString& field)
{
    complain({.clientID = {}, .name = field}, std::nullopt);
    complain({.clientID = m_selected, .name = field}, std::nullopt);
}

void ClientsModel::refresh()
{
    m_isStale = true;
    if (m_isShown)
        ask([](ClientBook&) { return Outcome{}; }, [](const Outcome&) {});
}

void ClientsModel::editClient(const QString& clientID, const char* field,
                              std::function<ClientEdited<void>(ClientBook&, ClientID)> work)
{
    if (const auto id = ClientID::parse(clientID.toStdString()))
        edit({.clientID = id->uuid, .name = QLatin1String(field)},
             [id = *id, work = std::move(work)](ClientBook& book) { return outcome(work(book, id)); });
}

void ClientsModel::editProject(const QString& projectID, const char* field,
                               std::function<ClientEdited<void>(ClientBook&, ProjectID)> work)
{
    if (const auto id = ProjectID::parse(projectID.toStdString()))
        edit({.clientID = m_selected, .name = projectID + QLatin1Char('.') + QLatin1String(field)},
             [id = *id, work = std::move(work)](ClientBook& book) { return outcome(work(book, id)); });
}

void ClientsModel::edit(const Field& field, Edit work)
{
    ask(std::move(work), [this, field](const Outcome& outcome) { complain(field, outcome.problem); });
}

void ClientsModel::add(const Field& field, Edit work, std::function<void(const UUID& made)> done)
{
    if (std::exchange(m_isAdding, true))
        return;
    ask(std::move(work), [this, field, done = std::move(done)](const Outcome& outcome) {
        m_isAdding = false;
        complain(field, outcome.problem);
        if (outcome.made)
            done(*outcome.made);
    });
}

void ClientsModel::ask(Edit work, const std::function<void(const Outcome&)>& done)
{
    struct Answer {
        Outcome outcome;
        std::shared_ptr<const Shown> shown;
        std::optional<std::string> problem;
    };
    m_isStale = false;
    m_context.desk.ask(
        this,
        [work = std::move(work)](StoreDesk::Workplace& place) -> Answer {
            ClientBook book(place.store);
            Answer answer{.outcome = work(book), .shown = nullptr, .problem = std::nullopt};
            auto shown = [&]() -> Stored<Shown> {
                Shown read;
                read.clients = TRY(book.clients());
                read.projects = TRY(book.projects(std::nullopt));
                read.ledger = TRY(BillingDesk(place.store).settings());
                return read;
            }();
            if (shown)
                answer.shown = std::make_shared<const Shown>(*std::move(shown));
            else
                answer.problem = message(shown.error());
            return answer;
        },
        [this, done](const Answer& answer) {
            setProblem(answer.problem ? text(*answer.problem) : QString());
            if (answer.shown)
                show(answer.shown);
            else
                m_isStale = true;
            done(answer.outcome);
        },
        [this, done](const std::string& problem) {
            m_isStale = true;
            setProblem(text(problem));
            done({});
        });
}

void ClientsModel::show(std::shared_ptr<const Shown> shown)
{
    m_shown = std::move(shown);
    const auto standard = m_shown->ledger.defaultRounding.value_or(RoundingPolicy::exact);
    m_clientRoundings.show(roundingRows(tr("Standard (%1)").arg(text(label(standard)))));
    m_projectRoundings.show(roundingRows(tr("Same as client")));
    showRows();
    if (!m_selected)
        selectNeighbour(0);
}

void ClientsModel::showRows()
{
    std::vector<ProjectRow> projects;
    if (m_shown) {
        m_clients.show(clientRows(m_shown->clients, m_shown->projects, m_shown->ledger, m_words));
        const auto chosen = std::ranges::find_if(m_shown->clients, [this](const ListedClient& listed) {
            return m_selected == std::optional(listed.client.id.uuid);
        });
        if (chosen != m_shown->clients.end())
            projects = projectRows(*chosen, m_shown->projects, m_shown->ledger);
        else
            m_selected.reset();
    }
    m_projects.show(std::move(projects));
    Q_EMIT changed();
    Q_EMIT selectionChanged();
}

void ClientsModel::complain(const Field& field, const std::optional<std::string>& problem)
{
    auto& complaints = m_complaints[field.clientID];
    if (problem)
        complaints.insert(field.name, text(*problem));
    else
        complaints.remove(field.name);
    Q_EMIT complaintsChanged();
}

void ClientsModel::setProblem(const QString& problem)
{
    if (std::exchange(m_problem, problem) != problem)
        Q_EMIT complaintsChanged();
}

} // namespace stintbook
