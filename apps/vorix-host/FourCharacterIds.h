#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vorix {

// Ids of types, controls and chunks as the user reads and types them: four characters, the first
// in the high byte. Any thread.

inline std::string IdText(std::int32_t id) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        text.push_back(static_cast<char>((static_cast<std::uint32_t>(id) >> shift) & 0xFF));
    }
    return text;
}

// The id of exactly four characters; none for any other text.
inline std::optional<std::int32_t> ParseId(std::string_view text) {
    if (text.size() != 4) return std::nullopt;
    std::uint32_t id = 0;
    for (const char c : text)
        id = (id << 8) | static_cast<unsigned char>(c);
    return static_cast<std::int32_t>(id);
}

}  // namespace vorix
