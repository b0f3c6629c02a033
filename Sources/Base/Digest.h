#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace stintbook {

using SHA256Digest = std::array<std::uint8_t, 32>;

SHA256Digest sha256(std::string_view bytes);

/// Two lower-case digits a byte, in order.
std::string hexadecimal(const SHA256Digest& digest);

} // namespace stintbook
