#pragma once

#include <cstdint>

namespace vorix {

// A four-character code as one 32-bit word, first character in the high byte, so that
// FourCC("flrA") reads in code as the code reads in a document. Any thread.
constexpr std::uint32_t FourCC(const char (&code)[5]) noexcept {
    return (static_cast<std::uint32_t>(static_cast<unsigned char>(code[0])) << 24) |
           (static_cast<std::uint32_t>(static_cast<unsigned char>(code[1])) << 16) |
           (static_cast<std::uint32_t>(static_cast<unsigned char>(code[2])) << 8) |
           static_cast<std::uint32_t>(static_cast<unsigned char>(code[3]));
}

}  // namespace vorix
