#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "Capture/TraceReader.h"
#include "Capture/TraceWriter.h"
#include "Require.h"

namespace {

/// All lines up to the end or the first problem, as a writer puts them.
std::string rewritten(const std::string& trace)
{
    std::istringstream lines(trace);
    stintbook::TraceReader reader(lines);
    std::ostringstream output;
    stintbook::TraceWriter writer(output);
    while (auto line = reader.next()) {
        if (!*line)
            break;
        if (const auto* start = std::get_if<stintbook::CaptureStart>(&(*line)->event))
            writer.write(*start);
        else if (const auto* input = std::get_if<stintbook::PipelineInput>(&(*line)->event))
            writer.write(*input);
    }
    return output.str();
}

} // namespace

/// Whatever the reader takes, the writer writes so that the reader takes it again, for the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto once = rewritten(std::string(data, data + size));
    require(rewritten(once) == once);
    return 0;
}
