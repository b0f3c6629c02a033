#include "Screens/Settings/SoftwareUpdates.h"

#include "Base/BuildInformation.h"
#include "Screens/Models/Texts.h"

namespace stintbook {

SoftwareUpdates::SoftwareUpdates(const ScreenContext& context, std::shared_ptr<SoftwareUpdating> updating,
                                 QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_updating(std::move(updating))
    , m_errands("updates", context.main)
{
}

SoftwareUpdates::~SoftwareUpdates()
{
    m_stop.request_stop();
}

QString SoftwareUpdates::sentence() const
{
    switch (m_state) {
    case State::unknown:
        return {};
    case State::checking:
        return tr("Checking for updates…");
    case State::upToDate:
        return tr("Velloran %1 is the newest version.").arg(text(version()));
    case State::available:
        return tr("Velloran %1 is available.").arg(text(m_update->version));
    case State::installing:
        return tr("Installing Velloran %1…").arg(text(m_update->version));
    case State::installed:
        return tr("The update is installed. It is used when Velloran starts the next time.");
    case State::failed:
        break;
    }
    return m_problem;
}

void SoftwareUpdates::check()
{
    if (isBusy())
        return;
    m_update.reset();
    show(State::checking);
    using Answer = std::expected<std::optional<SoftwareUpdate>, SoftwareUpdateProblem>;
    m_errands.run(
        this, [updating = m_updating, stop = m_stop.get_token()] { return updating->check(stop); },
        [this](const Answer& answer) {
            if (!answer)
                return fail(answer.error());
            m_update = *answer;
            show(m_update ? State::available : State::upToDate);
        });
}

void SoftwareUpdates::install()
{
    if (isBusy() || !m_update)
        return;
    m_progress = 0;
    show(State::installing);
    const auto progress = [&main = m_context.main, guard = QPointer(this)](double done) {
        main.post([guard, done] {
            if (!guard)
                return;
            guard->m_progress = done;
            Q_EMIT guard->changed();
        });
    };
    m_errands.run(
        this,
        [updating = m_updating, update = *m_update, progress, stop = m_stop.get_token()] {
            return updating->install(update, progress, stop);
        },
        [this](const std::expected<void, SoftwareUpdateProblem>& answer) {
            if (!answer)
                return fail(answer.error());
            m_update.reset();
            show(State::installed);
        });
}

void SoftwareUpdates::show(State state)
{
    m_state = state;
    Q_EMIT changed();
}

void SoftwareUpdates::fail(const SoftwareUpdateProblem& problem)
{
    m_problem = text(message(problem));
    show(State::failed);
}

} // namespace stintbook
