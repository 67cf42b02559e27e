#pragma once

#include <cstdint>
#include <span>

namespace vorix {

// The one face every text of the editor is drawn in, compiled into the program so that no
// installed font, font configuration or search path can change a pixel. Any thread; the bytes
// are constant.
std::span<const std::uint8_t> EmbeddedSansFont();

}  // namespace vorix
