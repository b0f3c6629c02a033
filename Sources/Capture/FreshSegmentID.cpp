#include "Capture/FreshSegmentID.h"

#include <chrono>
#include <cstdint>

namespace stintbook {

SegmentID freshSegmentID()
{
    constexpr std::uint64_t nanosecondsInAMillisecond = 1'000'000;
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    const auto nanoseconds =
        static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(sinceEpoch).count());
    const auto milliseconds = nanoseconds / nanosecondsInAMillisecond;
    const auto fraction = nanoseconds % nanosecondsInAMillisecond * 4096 / nanosecondsInAMillisecond;

    auto id = SegmentID::random();
    auto& bytes = id.uuid.bytes;
    for (std::size_t byte = 0; byte < 6; ++byte)
        bytes[byte] = static_cast<std::uint8_t>(milliseconds >> (40 - 8 * byte));
    bytes[6] = static_cast<std::uint8_t>(0x70 | fraction >> 8U);
    bytes[7] = static_cast<std::uint8_t>(fraction);
    return id;
}

} // namespace stintbook
