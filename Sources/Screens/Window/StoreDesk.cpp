#include "Screens/Window/StoreDesk.h"

namespace stintbook {

StoreDesk::StoreDesk(Environment variables, Executor& main)
    : m_main(main)
    , m_room(std::make_shared<Room>(std::move(variables)))
{
}

std::optional<std::string> StoreDesk::Room::open()
{
    if (store)
        return std::nullopt;
    auto opened = OpenedStore::open(variables, StoreRole::guest);
    if (!opened)
        return message(opened.error());
    store = *std::move(opened);
    return std::nullopt;
}

} // namespace stintbook
