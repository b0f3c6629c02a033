#include "Support/AllocationCount.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t s_allocations = 0;

} // namespace

// NOLINTBEGIN(cppcoreguidelines-no-malloc): what replaces operator new has nothing else to stand on
void* operator new(std::size_t size)
{
    ++s_allocations;
    if (void* const memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    ++s_allocations;
    return std::malloc(size == 0 ? 1 : size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}
// NOLINTEND(cppcoreguidelines-no-malloc)

namespace stintbook {

AllocationCount::AllocationCount()
    : m_before(s_allocations)
{
}

std::size_t AllocationCount::soFar() const
{
    return s_allocations - m_before;
}

} // namespace stintbook
