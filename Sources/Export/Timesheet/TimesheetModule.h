#pragma once

#include <expected>
#include <string>

namespace stintbook {

/// The drawing library could not do it; its own words.
struct TimesheetProblem {
    std::string reason;
};
std::string message(const TimesheetProblem& problem);

/// A function of the module that draws, which is loaded with the first one. Any thread may ask.
std::expected<void*, TimesheetProblem> timesheetFunction(const char* name);

} // namespace stintbook
