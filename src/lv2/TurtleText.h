#pragma once

#include <string>
#include <string_view>

namespace vorix {

// Pieces of Turtle text for the generated bundle description. Build time; they allocate.

// A short string literal: "text", with backslashes, quotes and line breaks escaped.
std::string TurtleString(std::string_view text);

// A long string literal: """text""", which keeps line feeds and tabs as they are; backslashes and
// quotes are escaped, so that no run of quotes can end it early.
std::string TurtleLongString(std::string_view text);

// A decimal literal that reads back as the same float: the shortest fixed-point form, always
// with a decimal point ("1000.0", "0.05", "-18.0").
std::string TurtleDecimal(float value);

// An absolute URI in angle brackets.
std::string TurtleUri(std::string_view uri);

}  // namespace vorix
