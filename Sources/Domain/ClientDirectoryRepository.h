#pragma once

#include <expected>
#include <variant>
#include <vector>

#include "Domain/Client.h"
#include "Domain/ClientRefusals.h"
#include "Domain/PersistenceError.h"

namespace stintbook {

/// Why an edit of the client list did not happen. Nothing was changed.
using ClientEditError = std::variant<UnreadableRecord, StoreFailure, ClientDeletionRefused,
                                     ProjectOwnershipRefused, ArchivedClientRefused, BlankNameRefused>;

std::string message(const ClientEditError& error);

/// Everything editing clients and projects needs stored. Lists come in the order of creation.
class ClientDirectoryRepository {
public:
    virtual ~ClientDirectoryRepository() = default;

    virtual Stored<std::vector<Client>> clients() const = 0;
    virtual Stored<std::vector<Project>> projects() const = 0;
    virtual Stored<ClientReferenceCensus> referenceCensus() const = 0;

    /// Inserts, or replaces the client of that identifier: name, archived, colour.
    virtual std::expected<void, ClientEditError> saveClient(const Client& client) = 0;
    /// Inserts, or replaces the project of that identifier; its client never changes.
    virtual std::expected<void, ClientEditError> saveProject(const Project& project) = 0;
    /// Refused while anything recorded names it. A client's billing goes with it. A client that still has
    /// projects is refused, unless nothing recorded names those either: then they go with it.
    virtual std::expected<void, ClientEditError> deleteClient(ClientID client) = 0;
    virtual std::expected<void, ClientEditError> deleteProject(ProjectID project) = 0;
};

} // namespace stintbook
