#pragma once

#include <csignal>
#include <stop_token>
#include <thread>

namespace stintbook {

/// As long as it lives, SIGINT and SIGTERM ask the command to stop instead of ending the process, so that it
/// can clear away what it began. Made before any other thread.
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    std::stop_token token() const { return m_source.get_token(); }

private:
    sigset_t m_former{};
    std::stop_source m_source;
    std::jthread m_waiting;
};

} // namespace stintbook
