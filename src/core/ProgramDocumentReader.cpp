#include "core/ProgramDocumentReader.h"

#include "core/SettingsTexts.h"

namespace vorix {

bool ProgramDocumentReader::NextLine(std::string& line) {
    if (hitLongLine_ || position_ >= text_.size()) return false;
    std::size_t end = text_.find('\n', position_);
    if (end == std::string_view::npos) end = text_.size();
    const std::string_view found = text_.substr(position_, end - position_);
    if (found.size() >= kProgramLineBufferSize - 1) {
        hitLongLine_ = true;
        return false;
    }
    line.assign(found);
    position_ = end + 1;
    return true;
}

bool ProgramDocumentReader::FindHeader(std::string_view productName) {
    std::string line;
    while (NextLine(line)) {
        if (IsProgramDocumentHeader(line, productName)) return true;
    }
    return false;
}

bool IsProgramDocumentHeader(std::string_view line, std::string_view productName) {
    return line.find(kProgramHeaderStart) != std::string_view::npos &&
           line.find(kProgramHeaderEnd) != std::string_view::npos &&
           line.find(productName) != std::string_view::npos;
}

}  // namespace vorix
