#include "Domain/ClientRefusals.h"

namespace stintbook {

std::string message(const ClientDeletionRefused& refusal)
{
    return refusal.name + " is still used by recorded work, so it cannot be deleted. Archive it instead.";
}

std::string message(const ProjectOwnershipRefused&)
{
    return "A project's client cannot be changed. Nothing was saved.";
}

std::string message(const ArchivedClientRefused&)
{
    return "That client is archived, so a new project cannot be added to it.";
}

std::string message(const BlankNameRefused&)
{
    return "A client or project needs a name, so nothing was saved.";
}

} // namespace stintbook
