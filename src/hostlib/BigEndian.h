#pragma once

#include <bit>
#include <cstdint>

namespace vorix {

// Reads and writes of numbers high byte first, the byte order of everything the library stores in
// a session, whatever the machine. The caller has checked the bounds. Any thread; pure.

inline void StoreBigEndian16(std::uint8_t* out, std::uint16_t value) noexcept {
    out[0] = static_cast<std::uint8_t>(value >> 8);
    out[1] = static_cast<std::uint8_t>(value);
}

inline void StoreBigEndian32(std::uint8_t* out, std::uint32_t value) noexcept {
    for (int i = 0; i < 4; ++i)
        out[i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
}

inline void StoreBigEndian64(std::uint8_t* out, std::uint64_t value) noexcept {
    for (int i = 0; i < 8; ++i)
        out[i] = static_cast<std::uint8_t>(value >> (56 - 8 * i));
}

inline std::uint16_t LoadBigEndian16(const std::uint8_t* in) noexcept {
    return static_cast<std::uint16_t>((in[0] << 8) | in[1]);
}

inline std::uint32_t LoadBigEndian32(const std::uint8_t* in) noexcept {
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i)
        value = (value << 8) | in[i];
    return value;
}

inline std::uint64_t LoadBigEndian64(const std::uint8_t* in) noexcept {
    std::uint64_t value = 0;
    for (int i = 0; i < 8; ++i)
        value = (value << 8) | in[i];
    return value;
}

}  // namespace vorix
