#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vorix {

// How the software surface turns the editor's text into characters and lines. Any thread; pure
// functions.

// The characters of `text`, read as UTF-8. A byte that does not begin a well-formed sequence is
// taken as the Latin-1 character of the same value, so that no text is ever refused or lost.
std::u32string DecodeText(std::string_view text);

// The width of a piece of text on one line, in pixels. Widths must add up: a text is as wide as
// its pieces together, as it is without kerning.
using TextMeasure = std::function<std::int32_t(std::u32string_view)>;

// The text broken into the lines of a box `width` pixels wide. A line feed ends a line (a
// carriage return is dropped), and an empty line stays as an empty entry. Lines break at spaces
// and tabs, which vanish at the break; the whitespace that opens a paragraph stays. A word wider
// than the box stands on a line of its own, cut to what fits with "..." after it.
std::vector<std::u32string> BreakIntoLines(std::u32string_view text, std::int32_t width,
                                           const TextMeasure& measure);

}  // namespace vorix
