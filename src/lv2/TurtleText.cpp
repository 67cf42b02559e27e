#include "lv2/TurtleText.h"

#include <array>
#include <charconv>
#include <system_error>

namespace vorix {

namespace {

// Escapes what would end or break a literal; `keepLineBreaks` for long strings.
std::string Escaped(std::string_view text, bool keepLineBreaks) {
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        switch (c) {
            case '\\':
                out += "\\\\";
                break;
            case '"':
                out += "\\\"";
                break;
            case '\n':
                out += keepLineBreaks ? "\n" : "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            case '\t':
                out += keepLineBreaks ? "\t" : "\\t";
                break;
            default:
                out += c;
                break;
        }
    }
    return out;
}

}  // namespace

// `open`, the text, `close`; appended piece by piece (GCC 12 misreads the chained `+` form).
std::string Enclosed(std::string_view open, std::string_view text, std::string_view close) {
    std::string out(open);
    out += text;
    out += close;
    return out;
}

std::string TurtleString(std::string_view text) {
    return Enclosed("\"", Escaped(text, false), "\"");
}

std::string TurtleLongString(std::string_view text) {
    return Enclosed("\"\"\"", Escaped(text, true), "\"\"\"");
}

std::string TurtleDecimal(float value) {
    std::array<char, 64> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed);
    std::string text(buffer.data(), result.ec == std::errc() ? result.ptr : buffer.data());
    if (text.find('.') == std::string::npos) text += ".0";
    return text;
}

std::string TurtleUri(std::string_view uri) {
    return Enclosed("<", uri, ">");
}

}  // namespace vorix
