#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "App/OpenedStore.h"
#include "Billing/BillingSettings.h"
#include "Billing/HourlyRate.h"
#include "Domain/AssignmentDirectory.h"
#include "Domain/ClientDirectoryRepository.h"

namespace stintbook {

struct ListedClient {
    Client client;
    ClientReferences references;
    ClientBillingDefaults billing;
};

struct ListedProject {
    Project project;
    ClientReferences references;
    ProjectBillingOverrides billing;
};

/// The text is no colour.
struct ColorRefused {
    std::string text;
};

/// No client or project has that identifier any more.
struct ClientListEntryMissing { };

/// Why the client list stayed as it is.
using ClientBookProblem =
    std::variant<ClientEditError, ColorRefused, RateProblem, ClientListEntryMissing, AssignmentTargetProblem>;
std::string message(const ClientBookProblem& problem);

template <typename T> using ClientEdited = std::expected<T, ClientBookProblem>;

struct NewTarget {
    ClientID clientID;
    ProjectID projectID;
};

/// Clients, projects and what they bill. Texts of rates and colours are checked here; each edit is one
/// transaction.
class ClientBook {
public:
    explicit ClientBook(OpenedStore& store)
        : m_store(store)
    {
    }

    Stored<AssignmentDirectory> directory() const;
    Stored<std::vector<ListedClient>> clients() const;
    /// Of one client, or all.
    Stored<std::vector<ListedProject>> projects(std::optional<ClientID> client) const;

    struct NewClient {
        std::string name;
        std::optional<std::string> color;
        std::optional<std::string> rate;
        std::optional<RoundingPolicy> rounding;
    };
    ClientEdited<ClientID> addClient(const NewClient& client);
    ClientEdited<void> renameClient(ClientID id, const std::string& name);
    /// Absent: no colour.
    ClientEdited<void> colorClient(ClientID id, const std::optional<std::string>& color);
    ClientEdited<void> archiveClient(ClientID id, bool isArchived);
    ClientEdited<void> deleteClient(ClientID id);
    /// Absent or blank: no rate.
    ClientEdited<void> setClientRate(ClientID id, const std::optional<std::string>& rate);
    ClientEdited<void> setClientRounding(ClientID id, std::optional<RoundingPolicy> rounding);

    struct NewProject {
        ClientID clientID;
        std::string name;
        bool isBillable = true;
        std::optional<std::string> rate;
        std::optional<RoundingPolicy> rounding;
    };
    ClientEdited<ProjectID> addProject(const NewProject& project);
    ClientEdited<void> renameProject(ProjectID id, const std::string& name);
    ClientEdited<void> setProjectBillable(ProjectID id, bool isBillable);
    ClientEdited<void> archiveProject(ProjectID id, bool isArchived);
    ClientEdited<void> deleteProject(ProjectID id);
    ClientEdited<void> setProjectRate(ProjectID id, const std::optional<std::string>& rate);
    ClientEdited<void> setProjectRounding(ProjectID id, std::optional<RoundingPolicy> rounding);

    /// A client with its first project, or neither; the project's client is the new one.
    ClientEdited<NewTarget> addClientWithProject(const NewClient& client, NewProject project);

private:
    OpenedStore& m_store;
};

} // namespace stintbook
