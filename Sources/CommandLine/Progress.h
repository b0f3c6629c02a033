#pragma once

#include <chrono>
#include <ostream>
#include <string_view>

namespace stintbook {

/// One line that says how far long work has come: on a terminal only, from the second second on, and gone when
/// the work is done.
class Progress {
public:
    /// `errors` is the process's stderr.
    explicit Progress(std::ostream& errors);
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// May be called as often as one likes.
    void show(std::string_view text);
    /// Leaves the line to others.
    void clear();

private:
    std::ostream& m_errors;
    bool m_isTerminal;
    bool m_isShown = false;
    std::chrono::steady_clock::time_point m_next;
};

} // namespace stintbook
