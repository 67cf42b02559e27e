#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace vorix {

// The settings texts are read line by line, by substring, never as XML. These helpers take one
// line apart. Any thread; they allocate the text they return, so not for the audio thread.

// The text between the first double quote after the first occurrence of `name` and the next double
// quote. Empty if `name` or the opening quote is missing; the rest of the line if the closing quote
// is. The search for `name` is a plain substring search: "name" also finds the end of "filename".
std::string GetLineAttribute(std::string_view line, std::string_view name);

// Where the C library's number readers start in `text`: blanks skipped and one "+" dropped. Empty
// when no number can follow (blanks only, or a "+" before a "-").
std::string_view NumberStart(std::string_view text);

// A decimal number at the start of `text`, read as the C library's atoi reads it (blanks, a sign,
// digits, anything after them ignored); 0 without digits. Beyond the 32-bit range it stops at the
// range's end instead of overflowing.
std::int32_t ParseLineInteger(std::string_view text);

// The same attribute as a decimal number (ParseLineInteger); 0 when it is missing or has no digits.
std::int32_t GetIntLineAttribute(std::string_view line, std::string_view name);

// The text between the first ">" and the next "<" (or the end of the line); empty without ">".
std::string GetLineElementText(std::string_view line);

// The view options of an engine, ordered by byte comparison of the key.
using SettingsAttributes = std::map<std::string, std::string>;

// The attributes as their element: "<attributes>", then key "=" value for each entry in map order,
// joined by ",", then "</attributes>".
std::string FormatAttributeLine(const SettingsAttributes& attributes);

// Reads the element text of `line` as pairs of key and value, cut at every run of "=" and ","
// characters, into `attributes`. A key given twice keeps its last value; a lone key at the end is
// dropped. Entries not named in the line stay as they were.
void ParseAttributeLine(std::string_view line, SettingsAttributes& attributes);

}  // namespace vorix
