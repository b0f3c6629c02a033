#include "Screens/Settings/SettingsModel.h"

namespace stintbook {

SettingsModel::SettingsModel(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
{
}

void SettingsModel::environmentChanged()
{
}

} // namespace stintbook
