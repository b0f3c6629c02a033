#include "Screens/Clients/ClientsModel.h"

namespace stintbook {

ClientsModel::ClientsModel(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
{
}

void ClientsModel::refresh()
{
}

} // namespace stintbook
