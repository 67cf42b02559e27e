#include "serialization/EelException.h"

namespace vorix::Eel {
namespace {

std::string_view LastPathComponent(std::string_view file) {
    const std::size_t slash = file.find_last_of("/\\");
    return slash == std::string_view::npos ? file : file.substr(slash + 1);
}

std::string ComposeText(std::string_view words, std::string_view condition, std::string_view file,
                        int line) {
    std::string text(words);
    text += "\nExpression '";
    text += condition;
    text += "' failed in ";
    text += LastPathComponent(file);
    text += ':';
    text += std::to_string(line);
    return text;
}

}  // namespace

Exception::Exception(std::string_view words, std::string_view condition, std::string_view file,
                     int line)
    : std::runtime_error(ComposeText(words, condition, file, line)), mWords(words) {}

}  // namespace vorix::Eel
