#pragma once

#include <string>

#include "Domain/Client.h"

namespace stintbook {

/// Recorded work still names the client or project. Nothing was deleted.
struct ClientDeletionRefused {
    ClientReferences references;
    /// The client's or project's name.
    std::string name;

    friend bool operator==(const ClientDeletionRefused&, const ClientDeletionRefused&) = default;
};

/// A project was to be moved to another client. Nothing was saved.
struct ProjectOwnershipRefused {
    friend bool operator==(const ProjectOwnershipRefused&, const ProjectOwnershipRefused&) = default;
};

/// A project was to be added to an archived client.
struct ArchivedClientRefused {
    friend bool operator==(const ArchivedClientRefused&, const ArchivedClientRefused&) = default;
};

/// A client or project was to have no visible name.
struct BlankNameRefused {
    friend bool operator==(const BlankNameRefused&, const BlankNameRefused&) = default;
};

std::string message(const ClientDeletionRefused& refusal);
std::string message(const ProjectOwnershipRefused& refusal);
std::string message(const ArchivedClientRefused& refusal);
std::string message(const BlankNameRefused& refusal);

} // namespace stintbook
