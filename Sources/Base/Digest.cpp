#include "Base/Digest.h"

#include <openssl/evp.h>

namespace stintbook {

SHA256Digest sha256(std::string_view bytes)
{
    SHA256Digest digest{};
    EVP_Digest(bytes.data(), bytes.size(), digest.data(), nullptr, EVP_sha256(), nullptr);
    return digest;
}

std::string hexadecimal(const SHA256Digest& digest)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    text.reserve(2 * digest.size());
    for (const auto byte : digest) {
        text += digits[byte >> 4];
        text += digits[byte & 0x0F];
    }
    return text;
}

} // namespace stintbook
