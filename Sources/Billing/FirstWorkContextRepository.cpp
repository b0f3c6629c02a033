#include "Billing/FirstWorkContextRepository.h"

namespace stintbook {

std::string message(const FirstWorkContextProblem& problem)
{
    switch (problem.kind) {
    case FirstWorkContextProblem::Kind::unwritableValue:
        return "The " + problem.field
            + " could not be stored, so nothing was created. Check it and try again.";
    case FirstWorkContextProblem::Kind::projectNotOwnedByNewClient:
        return "The project does not belong to the client being created, so nothing was created.";
    }
    return {};
}

} // namespace stintbook
