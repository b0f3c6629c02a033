#include "Domain/ClientDirectoryRepository.h"

namespace stintbook {

std::string message(const ClientEditError& error)
{
    return std::visit([](const auto& what) { return message(what); }, error);
}

} // namespace stintbook
