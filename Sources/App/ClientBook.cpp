#include "App/ClientBook.h"

#include <algorithm>

#include "Base/Try.h"
#include "Store/PersistentReviewStore.h"

namespace stintbook {

namespace {

std::string sentence(const ColorRefused& refused)
{
    return "“" + refused.text
        + "” is no colour, so nothing was saved. Write six hexadecimal digits, for example #1A2B3C.";
}

std::string sentence(const ClientListEntryMissing&)
{
    return "That client or project is no longer in the client list, so nothing was saved.";
}

template <typename Problem> std::string sentence(const Problem& problem)
{
    return message(problem);
}

ClientBookProblem problemOf(PersistenceError error)
{
    return std::visit([](auto stored) -> ClientBookProblem { return ClientEditError(std::move(stored)); },
                      std::move(error));
}

/// The stored value, or the client list's problem with it.
template <typename T> ClientEdited<T> edited(Stored<T> stored)
{
    if (!stored)
        return std::unexpected(problemOf(std::move(stored).error()));
    if constexpr (std::is_void_v<T>)
        return {};
    else
        return *std::move(stored);
}

ClientEdited<std::optional<Decimal>> checkedRate(const std::optional<std::string>& text)
{
    return TRY(validateRate(text.value_or("")));
}

ClientEdited<std::optional<ClientColor>> checkedColor(const std::optional<std::string>& text)
{
    if (!text)
        return std::nullopt;
    auto color = ClientColor::fromText(*text);
    if (!color)
        return std::unexpected(ColorRefused{*text});
    return color;
}

/// The entry of that identifier.
template <typename Entry, typename ID> ClientEdited<Entry> found(Stored<std::vector<Entry>> entries, ID id)
{
    const auto list = TRY(edited(std::move(entries)));
    const auto place = std::ranges::find(list, id, &Entry::id);
    if (place == list.end())
        return std::unexpected(ClientListEntryMissing{});
    return *place;
}

/// Reads an entry, changes it and stores it, alone in writing.
template <typename Change> ClientEdited<void> changeClient(OpenedStore& store, ClientID id, Change change)
{
    return store.database().write([&](StoreConnection&) -> ClientEdited<void> {
        auto client = TRY(found(store.review().clients(), id));
        change(client);
        TRY(store.review().saveClient(client));
        return {};
    });
}

template <typename Change> ClientEdited<void> changeProject(OpenedStore& store, ProjectID id, Change change)
{
    return store.database().write([&](StoreConnection&) -> ClientEdited<void> {
        auto project = TRY(found(store.review().projects(), id));
        change(project);
        TRY(store.review().saveProject(project));
        return {};
    });
}

template <typename Change>
ClientEdited<void> changeClientBilling(OpenedStore& store, ClientID id, Change change)
{
    return store.database().write([&](StoreConnection&) -> ClientEdited<void> {
        TRY(found(store.review().clients(), id));
        auto billing = TRY(edited(store.review().billing())).clients[id];
        change(billing);
        return edited(store.review().saveClientBilling(id, billing));
    });
}

template <typename Change>
ClientEdited<void> changeProjectBilling(OpenedStore& store, ProjectID id, Change change)
{
    return store.database().write([&](StoreConnection&) -> ClientEdited<void> {
        TRY(found(store.review().projects(), id));
        auto billing = TRY(edited(store.review().billing())).projects[id];
        change(billing);
        return edited(store.review().saveProjectBilling(id, billing));
    });
}

template <typename Key, typename Value> Value valueAt(const std::map<Key, Value>& map, const Key& key)
{
    const auto place = map.find(key);
    return place == map.end() ? Value{} : place->second;
}

} // namespace

std::string message(const ClientBookProblem& problem)
{
    return std::visit([](const auto& which) { return sentence(which); }, problem);
}

Stored<AssignmentDirectory> ClientBook::directory() const
{
    auto clients = TRY(m_store.review().clients());
    auto projects = TRY(m_store.review().projects());
    return AssignmentDirectory(std::move(clients), std::move(projects));
}

Stored<std::vector<ListedClient>> ClientBook::clients() const
{
    return m_store.database().read([&](StoreConnection&) -> Stored<std::vector<ListedClient>> {
        const auto census = TRY(m_store.review().referenceCensus());
        const auto billing = TRY(m_store.review().billing());
        std::vector<ListedClient> listed;
        for (auto& client : TRY(m_store.review().clients())) {
            const auto id = client.id;
            listed.push_back({std::move(client), valueAt(census.byClient, id), valueAt(billing.clients, id)});
        }
        return listed;
    });
}

Stored<std::vector<ListedProject>> ClientBook::projects(std::optional<ClientID> client) const
{
    return m_store.database().read([&](StoreConnection&) -> Stored<std::vector<ListedProject>> {
        const auto census = TRY(m_store.review().referenceCensus());
        const auto billing = TRY(m_store.review().billing());
        std::vector<ListedProject> listed;
        for (auto& project : TRY(m_store.review().projects())) {
            if (client && project.clientID != *client)
                continue;
            const auto id = project.id;
            listed.push_back(
                {std::move(project), valueAt(census.byProject, id), valueAt(billing.projects, id)});
        }
        return listed;
    });
}

ClientEdited<ClientID> ClientBook::addClient(const NewClient& client)
{
    const auto color = TRY(checkedColor(client.color));
    const auto rate = TRY(checkedRate(client.rate));
    const auto id = ClientID::random();
    return m_store.database().write([&](StoreConnection&) -> ClientEdited<ClientID> {
        TRY(m_store.review().saveClient({id, client.name, false, color}));
        TRY(edited(m_store.review().saveClientBilling(id, {rate, client.rounding})));
        return id;
    });
}

ClientEdited<void> ClientBook::renameClient(ClientID id, const std::string& name)
{
    return changeClient(m_store, id, [&](Client& client) { client.name = name; });
}

ClientEdited<void> ClientBook::colorClient(ClientID id, const std::optional<std::string>& color)
{
    const auto checked = TRY(checkedColor(color));
    return changeClient(m_store, id, [&](Client& client) { client.color = checked; });
}

ClientEdited<void> ClientBook::archiveClient(ClientID id, bool isArchived)
{
    return changeClient(m_store, id, [&](Client& client) { client.isArchived = isArchived; });
}

ClientEdited<void> ClientBook::deleteClient(ClientID id)
{
    return m_store.database().write([&](StoreConnection&) -> ClientEdited<void> {
        TRY(found(m_store.review().clients(), id));
        TRY(m_store.review().deleteClient(id));
        return {};
    });
}

ClientEdited<void> ClientBook::setClientRate(ClientID id, const std::optional<std::string>& rate)
{
    const auto checked = TRY(checkedRate(rate));
    return changeClientBilling(m_store, id,
                               [&](ClientBillingDefaults& billing) { billing.hourlyRate = checked; });
}

ClientEdited<void> ClientBook::setClientRounding(ClientID id, std::optional<RoundingPolicy> rounding)
{
    return changeClientBilling(m_store, id,
                               [&](ClientBillingDefaults& billing) { billing.rounding = rounding; });
}

ClientEdited<ProjectID> ClientBook::addProject(const NewProject& project)
{
    const auto rate = TRY(checkedRate(project.rate));
    const auto id = ProjectID::random();
    return m_store.database().write([&](StoreConnection&) -> ClientEdited<ProjectID> {
        if (!found(m_store.review().clients(), project.clientID))
            return std::unexpected(AssignmentTargetProblem::clientMissing);
        TRY(m_store.review().saveProject({id, project.clientID, project.name, project.isBillable, false}));
        TRY(edited(m_store.review().saveProjectBilling(id, {rate, project.rounding})));
        return id;
    });
}

ClientEdited<NewTarget> ClientBook::addClientWithProject(const NewClient& client, NewProject project)
{
    return m_store.database().write([&](StoreConnection&) -> ClientEdited<NewTarget> {
        project.clientID = TRY(addClient(client));
        const auto projectID = TRY(addProject(project));
        return NewTarget{project.clientID, projectID};
    });
}

ClientEdited<void> ClientBook::renameProject(ProjectID id, const std::string& name)
{
    return changeProject(m_store, id, [&](Project& project) { project.name = name; });
}

ClientEdited<void> ClientBook::setProjectBillable(ProjectID id, bool isBillable)
{
    return changeProject(m_store, id, [&](Project& project) { project.defaultBillable = isBillable; });
}

ClientEdited<void> ClientBook::archiveProject(ProjectID id, bool isArchived)
{
    return changeProject(m_store, id, [&](Project& project) { project.isArchived = isArchived; });
}

ClientEdited<void> ClientBook::deleteProject(ProjectID id)
{
    return m_store.database().write([&](StoreConnection&) -> ClientEdited<void> {
        TRY(found(m_store.review().projects(), id));
        TRY(m_store.review().deleteProject(id));
        return {};
    });
}

ClientEdited<void> ClientBook::setProjectRate(ProjectID id, const std::optional<std::string>& rate)
{
    const auto checked = TRY(checkedRate(rate));
    return changeProjectBilling(m_store, id,
                                [&](ProjectBillingOverrides& billing) { billing.hourlyRate = checked; });
}

ClientEdited<void> ClientBook::setProjectRounding(ProjectID id, std::optional<RoundingPolicy> rounding)
{
    return changeProjectBilling(m_store, id,
                                [&](ProjectBillingOverrides& billing) { billing.rounding = rounding; });
}

} // namespace stintbook
