#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// The text forms of archive values. Numbers are written and read the same way whatever locale
// the host process has set, so that a document saved on one machine reads on any other.
namespace vorix::Serialization {

// Fixed notation with 16 places, as in "0.5000000000000000". Any thread.
std::string FormatFixed16(double value);
// An object id in decimal, zero-filled to 10 digits. Any thread.
std::string FormatPaddedId(std::uint64_t id);
// Upper-case hexadecimal, two digits a byte, high digit first. Any thread.
void AppendHex(std::string& text, const std::uint8_t* bytes, std::size_t count);

// `strtol` with base 0 ("0x1F" is hexadecimal, "010" octal), saturated to 32 bits. Any thread.
std::int32_t ParseIntBase0(std::string_view text);
// `strtoll` with base 0. Any thread.
std::int64_t ParseInt64Base0(std::string_view text);
// `strtoull` with base 0. Any thread.
std::uint64_t ParseUnsignedBase0(std::string_view text);
// `atol` at 64 bits: plain decimal, 0 for no number. Any thread.
std::int64_t ParseDecimal(std::string_view text);
// `atof` in the "C" locale: 0 for no number. Any thread.
double ParseFloat(std::string_view text);

// Whether `value` holds a character that the archive cannot store. Any thread.
bool HasSpecialCharacter(std::string_view value);
// Fills at most `size` bytes from hexadecimal digits, skipping white space. A character counts
// as the digit it would be in upper case: lower-case letters read wrongly. A lone last digit
// fills nothing. Answers the number of bytes filled. Any thread.
std::size_t DecodeHex(std::string_view text, std::uint8_t* bytes, std::size_t size);

}  // namespace vorix::Serialization
