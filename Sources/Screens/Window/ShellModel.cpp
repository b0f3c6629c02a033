#include "Screens/Window/ShellModel.h"

#include <QLocale>
#include <algorithm>
#include <utility>

#include "App/DayBook.h"
#include "App/MenuBarState.h"
#include "App/PlatformTexts.h"
#include "App/UntitledApplications.h"
#include "Screens/Models/Texts.h"
#include "Screens/Window/DesktopSettings.h"

namespace stintbook {

namespace {

/// What is older has been left for good.
constexpr int reviewedDayCount = 56;

QString textOrNothing(const std::optional<std::string>& sentence)
{
    return sentence ? text(*sentence) : QString();
}

struct Reading {
    int reviewCount = 0;
    std::vector<std::string> untitledApplications;
};

Reading read(OpenedStore& store, const CalendarContext& calendar, Instant now,
             std::optional<Instant> readableSince)
{
    Reading reading;
    const auto today = calendar.dayOf(now);
    const DayBook days(store, calendar);
    if (const auto listed = days.list(calendar.dayOf(now - Seconds{reviewedDayCount * 86400.0}), today))
        reading.reviewCount = static_cast<int>(std::ranges::count_if(*listed, [](const ListedDay& day) {
            return day.recordsState == RecordsDayState::needsReview && day.unreviewedDuration > Seconds{0};
        }));
    if (!readableSince || now <= *readableSince)
        return reading;
    if (const auto segments = store.segments().segments({*readableSince, now}))
        reading.untitledApplications = untitledApplications(*segments);
    return reading;
}

} // namespace

ShellModel::ShellModel(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
{
    if (auto& notice = m_context.environment.menuBarIconNotice())
        m_iconNotice = notice->follow([this] { iconNoticeChanged(); });
}

void ShellModel::setPage(const QString& page)
{
    if (std::exchange(m_page, page) != page)
        Q_EMIT pageChanged();
}

void ShellModel::setSettingsOpen(bool isOpen)
{
    if (std::exchange(m_settingsOpen, isOpen) != isOpen)
        Q_EMIT settingsOpenChanged();
}

void ShellModel::setHelpOpen(bool isOpen)
{
    if (std::exchange(m_helpOpen, isOpen) != isOpen)
        Q_EMIT helpOpenChanged();
}

QString ShellModel::captureText() const
{
    return text(menubar::statusLine(m_context.environment.captureStatus(), m_context.calendar(),
                                    QLocale().name().toStdString()));
}

bool ShellModel::isRecording() const
{
    return m_context.environment.captureStatus().runtime.isActive();
}

bool ShellModel::isPaused() const
{
    return m_context.environment.captureStatus().runtime.isPaused();
}

QString ShellModel::pauseTitle() const
{
    return text(menubar::title(menubar::Row::pause));
}

QString ShellModel::resumeTitle() const
{
    return text(menubar::title(menubar::Row::resume));
}

QVariantList ShellModel::pauseLengths() const
{
    QVariantList lengths;
    for (const auto length : menubar::pauseLengths)
        lengths.append(QVariantMap{{"key", text(rawValue(length))}, {"name", text(menubar::title(length))}});
    return lengths;
}

QString ShellModel::captureProblem() const
{
    return textOrNothing(m_context.environment.captureProblem());
}

void ShellModel::pause(const QString& length)
{
    if (const auto option = fromRawValue<TimedPauseOption>(length.toStdString()))
        m_context.environment.pause(*option);
}

void ShellModel::resume()
{
    m_context.environment.resume();
}

bool ShellModel::isContextLimited() const
{
    return isRecording() && m_context.environment.permissionState() != CapturePermissionState::granted;
}

bool ShellModel::isAskingForAccessibility() const
{
    return m_context.environment.isResolvingBrowserContext();
}

void ShellModel::turnOnAccessibility()
{
    m_context.environment.resolveBrowserContext();
}

QString ShellModel::storeProblem() const
{
    return textOrNothing(m_context.environment.storeProblem());
}

QString ShellModel::storeProblemDetail() const
{
    const auto& problem = m_context.environment.openingProblem();
    return problem ? text(message(*problem)) : QString();
}

QString ShellModel::storeRetryMessage() const
{
    return textOrNothing(m_context.environment.storeRetryMessage());
}

bool ShellModel::isRetryingStore() const
{
    return m_context.environment.isRetryingStore();
}

void ShellModel::retryStore()
{
    m_context.environment.retryStore();
}

bool ShellModel::isIconHidden() const
{
    const auto& notice = m_context.environment.menuBarIconNotice();
    return notice && notice->isShown() && !m_isIconNoticeDismissed;
}

QString ShellModel::iconHiddenTitle() const
{
    return text(platformtexts::iconHiddenTitle);
}

QString ShellModel::iconHiddenExplanation() const
{
    return text(platformtexts::iconHiddenExplanation);
}

QString ShellModel::desktopSettingsTitle() const
{
    return desktopsettings::canBeOpened() ? text(platformtexts::openDesktopSettings) : QString();
}

void ShellModel::openDesktopSettings()
{
    desktopsettings::open();
}

void ShellModel::dismissIconNotice()
{
    m_isIconNoticeDismissed = true;
    Q_EMIT changed();
}

void ShellModel::iconNoticeChanged()
{
    // The next time it is worth a notice again.
    if (!m_context.environment.menuBarIconNotice()->isShown())
        m_isIconNoticeDismissed = false;
    Q_EMIT changed();
}

void ShellModel::environmentChanged()
{
    const auto& environment = m_context.environment;
    const bool readsTitles =
        isRecording() && !isContextLimited() && m_context.environment.preferences().retainsTitleContext();
    if (!readsTitles)
        m_readableSince.reset();
    else if (!m_readableSince)
        m_readableSince = m_context.clock.now();
    if (environment.store() == nullptr)
        m_reviewCount = 0;
    Q_EMIT changed();
}

void ShellModel::refresh()
{
    // However many changes come while it is being read, it is read once more.
    if (std::exchange(m_isReading, true)) {
        m_hasChangedMeanwhile = true;
        return;
    }
    m_context.readings.ask(
        this,
        [calendar = m_context.calendar(), now = m_context.clock.now(), readableSince = m_readableSince](
            StoreDesk::Workplace& place) { return read(place.store, calendar, now, readableSince); },
        [this](const Reading& reading) {
            m_isReading = false;
            m_reviewCount = reading.reviewCount;
            m_untitledApplications.clear();
            for (const auto& name : reading.untitledApplications)
                m_untitledApplications.append(text(name));
            Q_EMIT dataChanged();
            if (std::exchange(m_hasChangedMeanwhile, false))
                refresh();
        },
        [this](const std::string&) { m_isReading = false; });
}

} // namespace stintbook
