#include "Export/BillingRepository.h"

namespace stintbook {

std::string message(const ExportStoreProblem& problem)
{
    return "An export with the identifier " + problem.snapshotIdentityAlreadyExists.text()
        + " is recorded already. Nothing was saved.";
}

} // namespace stintbook
