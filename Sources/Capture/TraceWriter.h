#pragma once

#include <ostream>
#include <string>

#include "Capture/PipelineInput.h"

namespace stintbook {

/// Writes what capture is told as a trace, a line at a time, so that its replay comes to the same
/// segments.
class TraceWriter {
public:
    /// The stream outlives the writer. Whether it takes what is written is the caller's to ask.
    explicit TraceWriter(std::ostream& stream)
        : m_stream(stream)
    {
    }

    void write(const CaptureStart& start);
    /// A coordination point changes nothing and is left out.
    void write(const PipelineInput& input);

private:
    template <typename Fill> void line(Instant at, Fill fill);

    std::ostream& m_stream;
    std::string m_text;
};

} // namespace stintbook
