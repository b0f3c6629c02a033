#include "Screens/Records/RecordsModel.h"

namespace stintbook {

RecordsModel::RecordsModel(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
{
}

void RecordsModel::refresh()
{
}

} // namespace stintbook
