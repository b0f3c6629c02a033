#include "Screens/Onboarding/OnboardingModel.h"

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

void OnboardingModel::forgetComplaints()
{
    m_complaints = {};
    Q_EMIT changed();
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
    m_isBusy = true;
    forgetComplaints();
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
            if (added)
                m_addedClient = name.trimmed();
            else
                m_complaints = complaints(added.error(), name);
            Q_EMIT changed();
            if (added)
                Q_EMIT clientAdded();
        },
        [this](const std::string& problem) {
            m_isBusy = false;
            m_complaints.other = text(problem);
            Q_EMIT changed();
        });
}

void OnboardingModel::refresh()
{
    struct Answer {
        Stored<BillingSettings> billing;
        Stored<OpenedDay> day;
    };
    const auto calendar = m_context.calendar();
    m_context.desk.ask(
        this,
        [calendar, day = calendar.dayOf(m_context.clock.now())](StoreDesk::Workplace& place) {
            return Answer{.billing = BillingDesk(place.store).settings(),
                          .day = DayBook(place.store, calendar).open(day)};
        },
        [this](const Answer& answer) {
            if (answer.billing && answer.billing->currency)
                m_currency = text(answer.billing->currency->code());
            if (answer.day) {
                const auto length = answer.day->summary.day.workDuration;
                m_today = length > Seconds{0}
                    ? tr("%1 of work is recorded today so far.").arg(shortDuration(length))
                    : tr("Recording has just begun. What you do shows up in Review within moments.");
            }
            Q_EMIT changed();
        },
        [this](const std::string& problem) {
            m_today = text(problem);
            Q_EMIT changed();
        });
}

} // namespace stintbook
