#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <utility>

#include "Capture/PipelineInput.h"

namespace stintbook {

/// Inputs in the order in which they happened, although some of them wait for a reading: such a one takes
/// its place when it happens and holds back what comes later.
class OrderedInputs {
public:
    using Place = std::uint64_t;

    void push(PipelineInput input) { m_places.push_back({std::move(input), false}); }

    /// Takes a place to be filled later; `otherwise` stands in if nothing ever fills it.
    Place reserve(std::optional<PipelineInput> otherwise)
    {
        m_places.push_back({std::move(otherwise), true});
        return m_first + m_places.size() - 1;
    }

    /// None leaves the place empty. A place that has been given up stays as it is.
    void fill(Place place, std::optional<PipelineInput> input)
    {
        if (place < m_first || !m_places[place - m_first].isWaiting)
            return;
        m_places[place - m_first] = {std::move(input), false};
    }

    /// Waits no longer for what has not been filled.
    void giveUpWaiting()
    {
        for (auto& entry : m_places)
            entry.isWaiting = false;
    }

    /// Takes out the next input; none when there is none or when it still waits.
    std::optional<PipelineInput> next()
    {
        while (!m_places.empty() && !m_places.front().isWaiting) {
            auto input = std::move(m_places.front().input);
            m_places.pop_front();
            ++m_first;
            if (input)
                return input;
        }
        return std::nullopt;
    }

private:
    struct Entry {
        std::optional<PipelineInput> input;
        bool isWaiting = false;
    };

    std::deque<Entry> m_places;
    /// The place of the first entry.
    Place m_first = 0;
};

} // namespace stintbook
