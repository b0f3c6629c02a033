#include "CommandLine/Progress.h"

#include <unistd.h>

namespace stintbook {

namespace {

/// To the beginning of the line, which is cleared.
constexpr std::string_view anew = "\r\x1b[K";

} // namespace

Progress::Progress(std::ostream& errors)
    : m_errors(errors)
    , m_isTerminal(isatty(STDERR_FILENO) != 0)
    , m_next(std::chrono::steady_clock::now() + std::chrono::seconds(1))
{
}

void Progress::clear()
{
    if (m_isShown)
        m_errors << anew << std::flush;
    m_isShown = false;
}

void Progress::show(std::string_view text)
{
    const auto now = std::chrono::steady_clock::now();
    if (!m_isTerminal || now < m_next)
        return;
    m_errors << anew << text << std::flush;
    m_isShown = true;
    m_next = now + std::chrono::milliseconds(200);
}

} // namespace stintbook
