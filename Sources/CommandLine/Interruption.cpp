#include "CommandLine/Interruption.h"

#include <pthread.h>

namespace stintbook {

Interruption::Interruption()
{
    sigset_t signals{};
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, &m_former);
    m_waiting = std::jthread([signals, source = m_source]() mutable {
        int signal = 0;
        sigwait(&signals, &signal);
        source.request_stop();
    });
}

Interruption::~Interruption()
{
    // Nobody asks any more; the thread waits for no other.
    pthread_kill(m_waiting.native_handle(), SIGTERM);
    m_waiting.join();
    pthread_sigmask(SIG_SETMASK, &m_former, nullptr);
}

} // namespace stintbook
