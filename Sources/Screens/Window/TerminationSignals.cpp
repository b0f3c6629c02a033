#include "Screens/Window/TerminationSignals.h"

#include <atomic>
#include <csignal>
#include <cstdint>
#include <tuple>

#include <sys/eventfd.h>
#include <unistd.h>

namespace stintbook {

namespace {

constexpr int signals[] = {SIGTERM, SIGINT, SIGHUP};

std::atomic<int> signalled = -1;

/// May run on any thread, in the middle of anything.
void note(int)
{
    const std::uint64_t one = 1;
    std::ignore = ::write(signalled.load(), &one, sizeof one);
}

void handle(void (*handler)(int))
{
    struct sigaction action{};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : signals)
        ::sigaction(signal, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> terminate)
    : m_counter(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , m_notifier(m_counter.get(), QSocketNotifier::Read)
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier,
                     [this, terminate = std::move(terminate)] {
                         std::uint64_t count = 0;
                         std::ignore = ::read(m_counter.get(), &count, sizeof count);
                         terminate();
                     });
    signalled = m_counter.get();
    handle(note);
}

TerminationSignals::~TerminationSignals()
{
    handle(SIG_DFL);
    signalled = -1;
}

} // namespace stintbook
