#pragma once

#include <cstddef>

namespace stintbook {

/// How often this thread has allocated since it was made. Its source replaces the global operator new, in
/// those test programs alone that use it.
class AllocationCount {
public:
    AllocationCount();
    std::size_t soFar() const;

private:
    std::size_t m_before;
};

} // namespace stintbook
