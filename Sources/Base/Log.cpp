#include "Base/Log.h"

#include <array>
#include <mutex>
#include <string>

#include <spdlog/logger.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <sys/uio.h>
#include <syslog.h>
#include <systemd/sd-journal.h>
#include <unistd.h>

#include "Base/BuildInformation.h"

namespace stintbook::log {

namespace {

void writeToJournal(Level level, std::string_view sentence)
{
    // "Notice" is what a journal shows by default and does not colour as a failure.
    std::array<std::string, 3> fields{
        "MESSAGE=" + std::string(sentence),
        "PRIORITY=" + std::to_string(level == Level::error ? LOG_ERR : LOG_NOTICE),
        "SYSLOG_IDENTIFIER=" + std::string(applicationIdentifier),
    };
    std::array<iovec, 3> parts{};
    for (std::size_t i = 0; i < fields.size(); ++i)
        parts[i] = {fields[i].data(), fields[i].size()};
    sd_journal_sendv(parts.data(), static_cast<int>(parts.size()));
}

Sink standardErrorSink()
{
    auto logger =
        std::make_shared<spdlog::logger>("stderr", std::make_shared<spdlog::sinks::stderr_sink_st>());
    logger->set_pattern("%Y-%m-%d %H:%M:%S %l: %v");
    logger->flush_on(spdlog::level::info);
    return [logger](Level level, std::string_view sentence) {
        logger->log(level == Level::error ? spdlog::level::err : spdlog::level::info, sentence);
    };
}

Sink systemSink()
{
    if (access("/run/systemd/journal/socket", W_OK) != 0)
        return standardErrorSink();
    if (isatty(STDERR_FILENO) == 0)
        return writeToJournal;
    return [toStandardError = standardErrorSink()](Level level, std::string_view sentence) {
        writeToJournal(level, sentence);
        toStandardError(level, sentence);
    };
}

struct Destination {
    std::mutex lock;
    Sink sink;
};

Destination& destination()
{
    static Destination instance;
    return instance;
}

} // namespace

void write(Level level, std::string_view sentence)
{
    Destination& to = destination();
    const std::scoped_lock guard(to.lock);
    if (!to.sink)
        to.sink = systemSink();
    to.sink(level, sentence);
}

Sink replaceSink(Sink sink)
{
    Destination& to = destination();
    const std::scoped_lock guard(to.lock);
    return std::exchange(to.sink, std::move(sink));
}

} // namespace stintbook::log
