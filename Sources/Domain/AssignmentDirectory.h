#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Domain/Client.h"

namespace stintbook {

/// Why new work may not be assigned to a client and project.
enum class AssignmentTargetProblem {
    clientMissing,
    projectMissing,
    clientArchived,
    projectArchived,
    projectBelongsToAnotherClient,
};

/// "its client is archived" and the like.
std::string_view reason(AssignmentTargetProblem problem);
/// The whole sentence that refuses an edit.
std::string message(AssignmentTargetProblem problem);

/// A read-only lookup over the client list. Where two entries share an identifier the first one counts.
class AssignmentDirectory {
public:
    AssignmentDirectory() = default;
    AssignmentDirectory(std::vector<Client> clients, std::vector<Project> projects);

    const std::vector<Client>& clients() const { return m_clients; }
    const std::vector<Project>& projects() const { return m_projects; }
    const Client* client(ClientID id) const;
    const Project* project(ProjectID id) const;

    /// Absent when the target may receive new work. A missing project is reported before an archived
    /// client, an archived client before an archived project.
    std::optional<AssignmentTargetProblem> problem(ClientID client, ProjectID project) const;

    /// Clients that are not archived, and the one chosen at present even if it is, last.
    std::vector<Client> selectableClients(std::optional<ClientID> chosen) const;
    std::vector<Project> selectableProjects(ClientID client, std::optional<ProjectID> chosen) const;

private:
    std::vector<Client> m_clients;
    std::vector<Project> m_projects;
    std::unordered_map<ClientID, std::size_t> m_clientsByID;
    std::unordered_map<ProjectID, std::size_t> m_projectsByID;
};

} // namespace stintbook
