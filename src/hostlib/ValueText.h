#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vorix {

// Text forms of control values, shared by the control classes. A `maxChars` is always the size
// of the caller's buffer, terminating zero included, so a text fits when it is shorter than it.
// Any thread; locale-independent (a decimal comma in the host's locale changes nothing).

// The text of a real value with a unit prefix from the rows prefixBegin to prefixEnd of the
// prefix table: the largest prefix not above the value, as many of `digits` decimals as fit,
// and the unit behind a blank when `showUnit` is set and there is room. The result already
// fits `maxChars`. Any thread.
std::string FormatValue(double real, int digits, std::string_view unit, std::int32_t maxChars,
                        bool showUnit, int prefixBegin, int prefixEnd);

// Copies `text` into a buffer of `maxChars` characters, cut to fit and zero-terminated. Does
// nothing when there is no room even for the terminator. Any thread.
void CopyToBuffer(std::string_view text, char* buffer, std::int32_t maxChars) noexcept;

// `value` with `decimals` decimals in fixed notation. Any thread.
std::string FixedText(double value, int decimals);

// A plain decimal number at `pos` of `text`: optional blanks, an optional sign, digits with an
// optional point. No exponent, so that a letter behind the number is always a prefix or a unit.
// Any thread.
struct ReadNumberResult {
    double value;
    std::size_t end;  // the position behind the number
};
std::optional<ReadNumberResult> ReadNumber(std::string_view text, std::size_t pos);

// A number followed by optional blanks and an optional prefix letter from the rows prefixBegin
// to prefixEnd, scaled by that prefix's factor. Any thread.
std::optional<ReadNumberResult> ReadScaledNumber(std::string_view text, std::size_t pos,
                                                 int prefixBegin, int prefixEnd);

// The position of the first character at or after `pos` that is not a blank. Any thread.
std::size_t SkipBlanks(std::string_view text, std::size_t pos) noexcept;

}  // namespace vorix
