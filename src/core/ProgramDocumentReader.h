#pragma once

#include <string>
#include <string_view>

namespace vorix {

// Reads a program document one line at a time, as the format defines its lines: up to a line
// feed, at most kProgramLineBufferSize - 2 characters. A longer line is outside the format; the
// reader then stops for good and says so, and the caller refuses the whole document.
// Main thread; allocates.
class ProgramDocumentReader {
  public:
    // `text` is not copied and must outlive the reader.
    explicit ProgramDocumentReader(std::string_view text) noexcept : text_(text) {}

    // The next line without its line feed; false at the end of the text or at a line that is
    // too long.
    bool NextLine(std::string& line);

    // Skips lines up to and including the header line of `productName`'s program document; false
    // if the text ends (or a line is too long) first.
    bool FindHeader(std::string_view productName);

    // Whether reading stopped at a line that is too long.
    bool HitLongLine() const noexcept { return hitLongLine_; }

  private:
    std::string_view text_;
    std::size_t position_ = 0;
    bool hitLongLine_ = false;
};

// Whether `line` is the header line of `productName`'s program document: it holds the maker's
// opening words, the closing words and the product name, wherever they stand. Any thread.
bool IsProgramDocumentHeader(std::string_view line, std::string_view productName);

}  // namespace vorix
