#include "Domain/PersistenceError.h"

namespace stintbook {

std::string message(const UnreadableRecord& record)
{
    return "A stored activity record could not be read (field: " + record.field + ").";
}

std::string message(const StoreFailure& failure)
{
    return failure.reason;
}

std::string message(const PersistenceError& error)
{
    return std::visit([](const auto& what) { return message(what); }, error);
}

} // namespace stintbook
