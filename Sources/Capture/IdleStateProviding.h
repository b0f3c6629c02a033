#pragma once

#include <expected>
#include <string>

#include "Base/Instant.h"

namespace stintbook {

struct IdleState {
    /// Since the last input of any kind.
    Seconds idle;
    /// The machine's uptime without sleep.
    Seconds awake;
};

class IdleStateProviding {
public:
    virtual ~IdleStateProviding() = default;
    /// Both sampled together; the error says why no sample could be taken. Does not block.
    virtual std::expected<IdleState, std::string> sample() = 0;
    virtual std::string name() const = 0;
};

} // namespace stintbook
