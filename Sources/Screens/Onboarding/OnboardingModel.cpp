#include "Screens/Onboarding/OnboardingModel.h"

namespace stintbook {

OnboardingModel::OnboardingModel(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
{
}

} // namespace stintbook
