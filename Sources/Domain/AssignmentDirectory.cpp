#include "Domain/AssignmentDirectory.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace stintbook {

namespace {

template <typename Entry> auto firstByID(const std::vector<Entry>& entries)
{
    std::unordered_map<decltype(Entry::id), std::size_t> positions;
    positions.reserve(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i)
        positions.try_emplace(entries[i].id, i);
    return positions;
}

template <typename Entry, typename Positions>
const Entry* lookUp(const std::vector<Entry>& entries, const Positions& positions, decltype(Entry::id) id)
{
    const auto found = positions.find(id);
    return found == positions.end() ? nullptr : &entries[found->second];
}

template <typename Entry> void appendUnlessListed(std::vector<Entry>& entries, const Entry* chosen)
{
    if (chosen && std::ranges::find(entries, chosen->id, &Entry::id) == entries.end())
        entries.push_back(*chosen);
}

} // namespace

std::string_view reason(AssignmentTargetProblem problem)
{
    switch (problem) {
    case AssignmentTargetProblem::clientMissing:
        return "its client is no longer in the client list";
    case AssignmentTargetProblem::projectMissing:
        return "its project is no longer in the client list";
    case AssignmentTargetProblem::clientArchived:
        return "its client is archived";
    case AssignmentTargetProblem::projectArchived:
        return "its project is archived";
    case AssignmentTargetProblem::projectBelongsToAnotherClient:
        return "its project belongs to a different client";
    }
    return {};
}

std::string message(AssignmentTargetProblem problem)
{
    return "That client or project cannot receive new work: " + std::string(reason(problem)) + ".";
}

AssignmentDirectory::AssignmentDirectory(std::vector<Client> clients, std::vector<Project> projects)
    : m_clients(std::move(clients))
    , m_projects(std::move(projects))
    , m_clientsByID(firstByID(m_clients))
    , m_projectsByID(firstByID(m_projects))
{
}

const Client* AssignmentDirectory::client(ClientID id) const
{
    return lookUp(m_clients, m_clientsByID, id);
}

const Project* AssignmentDirectory::project(ProjectID id) const
{
    return lookUp(m_projects, m_projectsByID, id);
}

std::optional<AssignmentTargetProblem> AssignmentDirectory::problem(ClientID clientID,
                                                                    ProjectID projectID) const
{
    const Client* const theClient = client(clientID);
    if (!theClient)
        return AssignmentTargetProblem::clientMissing;
    const Project* const theProject = project(projectID);
    if (!theProject)
        return AssignmentTargetProblem::projectMissing;
    if (theClient->isArchived)
        return AssignmentTargetProblem::clientArchived;
    if (theProject->isArchived)
        return AssignmentTargetProblem::projectArchived;
    if (theProject->clientID != clientID)
        return AssignmentTargetProblem::projectBelongsToAnotherClient;
    return std::nullopt;
}

std::vector<Client> AssignmentDirectory::selectableClients(std::optional<ClientID> chosen) const
{
    std::vector<Client> selectable;
    std::ranges::copy_if(m_clients, std::back_inserter(selectable),
                         [](const Client& entry) { return !entry.isArchived; });
    if (chosen)
        appendUnlessListed(selectable, client(*chosen));
    return selectable;
}

std::vector<Project> AssignmentDirectory::selectableProjects(ClientID clientID,
                                                             std::optional<ProjectID> chosen) const
{
    std::vector<Project> selectable;
    std::ranges::copy_if(m_projects, std::back_inserter(selectable), [&](const Project& entry) {
        return !entry.isArchived && entry.clientID == clientID;
    });
    const Project* const current = chosen ? project(*chosen) : nullptr;
    if (current && current->clientID == clientID)
        appendUnlessListed(selectable, current);
    return selectable;
}

} // namespace stintbook
