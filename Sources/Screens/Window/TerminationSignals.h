#pragma once

#include <QSocketNotifier>
#include <functional>

#include "Base/FileDescriptor.h"

namespace stintbook {

/// SIGTERM, SIGINT and SIGHUP as calls on the event loop, as long as this lives. One at a time in a process.
class TerminationSignals {
public:
    explicit TerminationSignals(std::function<void()> terminate);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    FileDescriptor m_counter;
    QSocketNotifier m_notifier;
};

} // namespace stintbook
