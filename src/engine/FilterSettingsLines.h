#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <string_view>

namespace vorix {

// Line-level helpers of the filter settings reader. The document is read one line at a time and
// lines are recognised by substring; these take care of line ends, numbers and the checks that
// refuse a document. None of them is for the audio thread.

// No frequency in a document stands above this many hertz, whatever the sample rate.
inline constexpr float kHighestDocumentHz = 20000.0f;

// The most sections an External filter of a document may have, and the most all its External
// filters may have together, each channel's counted. Real External filters have a handful of sections; a document beyond
// these is damaged or hostile, and would cost the audio thread more than real time.
inline constexpr std::size_t kMaxSectionsPerFilter = 256;
inline constexpr std::size_t kMaxSectionsPerDocument = 1024;

// The next line without its line feed, and without the carriage return in front of it that files
// from other systems carry. False at the end of the stream. Editor or host thread; allocates.
bool ReadSettingsLine(std::istream& in, std::string& line);

// Whether `part` occurs anywhere in `text`. Any thread; allocates nothing.
inline bool Holds(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

// A decimal number at the start of `text`, after blanks: an optional sign, digits with an optional
// fraction and exponent; what follows is ignored. Text that is no number, and numbers that are not
// finite in single precision, read as 0. Any thread; allocates nothing.
float ParseSettingsNumber(std::string_view text);

// True when `name` occurs in the line and a quoted value follows it, empty or not. Any thread;
// allocates nothing.
bool HasLineAttribute(std::string_view line, std::string_view name);

// The element text of a line that must have one: raises PluginCore::InvalidSettingsData when the
// line holds no ">". Editor or host thread; allocates.
std::string RequiredElementText(std::string_view line);

// Raises PluginCore::InvalidSettingsData unless the line holds the attribute (HasLineAttribute).
// Editor or host thread.
void RequireLineAttribute(std::string_view line, std::string_view name);

}  // namespace vorix
