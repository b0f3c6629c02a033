#pragma once

#include <QVariantMap>

#include "Screens/Clients/ClientsModel.h"
#include "Screens/Onboarding/OnboardingModel.h"
#include "Screens/Records/RecordsModel.h"
#include "Screens/Review/ReviewEdits.h"
#include "Screens/Review/ReviewModel.h"
#include "Screens/Rules/RulesModel.h"
#include "Screens/Settings/SettingsModel.h"
#include "Screens/Window/AppearanceModel.h"
#include "Screens/Window/ScreenContext.h"
#include "Screens/Window/ShellModel.h"

namespace stintbook {

/// The models of all screens, made when the window first opens.
class WindowContent {
public:
    explicit WindowContent(const ScreenContext& context);

    /// What the window's root requires, by its properties' names.
    QVariantMap properties();
    ShellModel& shell() { return m_shell; }
    SettingsModel& settings() { return m_settings; }
    TimesheetProvider* timesheetProvider() const { return m_records.timesheetProvider(); }
    /// The environment, or the store below it, is not as it was.
    void environmentChanged();
    /// While its window is closed nothing is read.
    void setShown(bool isShown);

private:
    void refreshWhatIsOutdated();

    ScreenContext m_context;
    std::int64_t m_shownRevision = -1;
    bool m_isShown = true;
    AppearanceModel m_appearance;
    ShellModel m_shell;
    ReviewModel m_review;
    ReviewEdits m_edits{m_review};
    RecordsModel m_records;
    ClientsModel m_clients;
    RulesModel m_rules;
    SettingsModel m_settings;
    OnboardingModel m_onboarding;
};

} // namespace stintbook
