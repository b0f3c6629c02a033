#include "Screens/Rules/RulesModel.h"

namespace stintbook {

RulesModel::RulesModel(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
{
}

void RulesModel::refresh()
{
}

} // namespace stintbook
