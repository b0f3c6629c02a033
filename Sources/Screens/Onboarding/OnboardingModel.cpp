#include "Screens/Onboarding/OnboardingModel.h"

#include <utility>

#include "App/BillingDesk.h"
#include "App/DayBook.h"
#include "Screens/Models/Texts.h"

namespace stintbook {

namespace {

bool isAboutAName(const ClientBookProblem& problem)
{
    const auto* refusal = std::get_if<ClientEditError>(&problem);
    return refusal != nullptr && std::holds_alternative<BlankNameRefused>(*refusal);
}

QString todayText(Seconds length)
{
    return length > Seconds{0}
        ? QObject::tr("%1 of work is recorded today so far.").arg(shortDuration(length))
        : QObject::tr("Recording has just begun. What you do shows up in Review within moments.");
}

} // namespace

OnboardingModel::OnboardingModel(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
{
}

bool OnboardingModel::isDue() const
{
    auto& environment = m_context.environment;
    return !environment.hasPresentedOnboarding() && !environment.preferences().hasCompletedOnboarding();
}

void OnboardingModel::complete()
{
    m_context.environment.preferences().setHasCompletedOnboarding(true);
    m_context.environment.setHasPresentedOnboarding();
}

void OnboardingModel::setComplaints(const Complaints& complaints)
{
    m_complaints = complaints;
    Q_EMIT changed();
}

void OnboardingModel::complain(const QString& sentence)
{
    Complaints complaints;
    complaints.other = sentence;
    setComplaints(complaints);
}

OnboardingModel::Complaints OnboardingModel::complaints(const ClientBookProblem& problem,
                                                        const QString& name) const
{
    const auto sentence = text(message(problem));
    Complaints complaints;
    if (std::holds_alternative<RateProblem>(problem))
        complaints.rate = sentence;
    else if (isAboutAName(problem))
        (name.trimmed().isEmpty() ? complaints.name : complaints.project) = sentence;
    else
        complaints.other = sentence;
    return complaints;
}

void OnboardingModel::addClient(const QString& name, const QString& project, const QString& rate)
{
    if (std::exchange(m_isBusy, true))
        return;
    setComplaints({});
    const ClientBook::NewClient client{
        .name = name.toStdString(), .color = {}, .rate = rate.toStdString(), .rounding = {}};
    m_context.desk.ask(
        this,
        [client, project = project.toStdString()](StoreDesk::Workplace& place) {
            return ClientBook(place.store)
                .addClientWithProject(client, {.clientID = {}, .name = project, .rate = {}, .rounding = {}});
        },
        [this, name](const ClientEdited<NewTarget>& added) {
            m_isBusy = false;
            if (!added)
                return setComplaints(complaints(added.error(), name));
            m_addedClient = name.trimmed();
            Q_EMIT changed();
            Q_EMIT clientAdded();
        },
        [this](const std::string& problem) {
            m_isBusy = false;
            complain(text(problem));
        });
}

void OnboardingModel::readCurrency()
{
    m_context.desk.ask(
        this, [](StoreDesk::Workplace& place) { return BillingDesk(place.store).settings(); },
        [this](const Stored<BillingSettings>& billing) {
            if (!billing)
                return complain(text(message(billing.error())));
            m_currency = billing->currency ? text(billing->currency->code()) : QString();
            Q_EMIT changed();
        },
        [this](const std::string& problem) { complain(text(problem)); });
}

void OnboardingModel::readToday()
{
    const auto calendar = m_context.calendar();
    m_context.desk.ask(
        this,
        [calendar, day = calendar.dayOf(m_context.clock.now())](StoreDesk::Workplace& place) {
            return DayBook(place.store, calendar).open(day);
        },
        [this](const Stored<OpenedDay>& day) {
            m_today = day ? todayText(day->summary.day.workDuration) : text(message(day.error()));
            Q_EMIT changed();
        },
        [this](const std::string& problem) {
            m_today = text(problem);
            Q_EMIT changed();
        });
}

} // namespace stintbook
