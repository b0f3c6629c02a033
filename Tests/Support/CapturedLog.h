#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Base/Log.h"

namespace stintbook {

/// Keeps the log's sentences for as long as it lives, in place of the journal. Read it when no other
/// thread writes.
class CapturedLog {
public:
    CapturedLog()
        : m_former(log::replaceSink([this](log::Level level, std::string_view sentence) {
            (level == log::Level::error ? m_errors : m_events).emplace_back(sentence);
        }))
    {
    }
    ~CapturedLog() { log::replaceSink(std::move(m_former)); }
    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;

    const std::vector<std::string>& events() const { return m_events; }
    const std::vector<std::string>& errors() const { return m_errors; }

private:
    std::vector<std::string> m_events;
    std::vector<std::string> m_errors;
    log::Sink m_former;
};

} // namespace stintbook
