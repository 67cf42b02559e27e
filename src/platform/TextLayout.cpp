#include "platform/TextLayout.h"

namespace vorix {
namespace {

constexpr std::u32string_view kEllipsis = U"...";

bool IsBlank(char32_t c) {
    return c == U' ' || c == U'\t';
}

// The length of the well-formed UTF-8 sequence at the start of `bytes` and its character, or 0.
std::size_t DecodeSequence(std::string_view bytes, char32_t* character) {
    auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); };
    const std::uint8_t lead = byte(0);
    std::size_t length = 0;
    char32_t value = 0;
    char32_t lowest = 0;
    if (lead < 0x80) {
        *character = lead;
        return 1;
    } else if ((lead & 0xE0) == 0xC0) {
        length = 2, value = lead & 0x1F, lowest = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3, value = lead & 0x0F, lowest = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4, value = lead & 0x07, lowest = 0x10000;
    } else {
        return 0;
    }
    if (bytes.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return 0;
        value = (value << 6) | (byte(i) & 0x3F);
    }
    // Overlong forms, surrogates and values beyond Unicode are not characters.
    if (value < lowest || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) return 0;
    *character = value;
    return length;
}

// The longest start of `text` that fits `width` with the ellipsis behind it.
std::u32string CutWithEllipsis(std::u32string_view text, std::int32_t width,
                               const TextMeasure& measure) {
    std::int32_t used = measure(kEllipsis);
    std::size_t length = 0;
    while (length < text.size()) {
        used += measure(text.substr(length, 1));
        if (used > width) break;
        ++length;
    }
    std::u32string cut;
    cut.reserve(length + kEllipsis.size());
    cut.append(text.substr(0, length));
    cut.append(kEllipsis);
    return cut;
}

// Widths add up, so each piece is measured once as it joins the line: the work grows with the
// text, however long its lines or words.
void BreakParagraph(std::u32string_view paragraph, std::int32_t width, const TextMeasure& measure,
                    std::vector<std::u32string>* lines) {
    const std::size_t linesBefore = lines->size();
    std::u32string line;
    std::int32_t lineWidth = 0;
    bool lineHasWord = false;
    bool paragraphStart = true;
    std::size_t i = 0;
    while (i < paragraph.size()) {
        std::size_t wordStart = i;
        while (wordStart < paragraph.size() && IsBlank(paragraph[wordStart])) {
            ++wordStart;
        }
        std::size_t wordEnd = wordStart;
        while (wordEnd < paragraph.size() && !IsBlank(paragraph[wordEnd])) {
            ++wordEnd;
        }
        const std::u32string_view blanks = paragraph.substr(i, wordStart - i);
        const std::u32string_view word = paragraph.substr(wordStart, wordEnd - wordStart);
        i = wordEnd;
        // Blanks between words stay, and so do those that open the paragraph; those at a break
        // vanish.
        const bool keepBlanks = lineHasWord || paragraphStart;
        paragraphStart = false;
        if (word.empty()) {
            if (keepBlanks && !lineHasWord) line += blanks;
            break;
        }

        const std::int32_t blanksWidth = keepBlanks ? measure(blanks) : 0;
        const std::int32_t wordWidth = measure(word);
        if (lineWidth + blanksWidth + wordWidth <= width) {
            if (keepBlanks) line += blanks;
            line += word;
            lineWidth += blanksWidth + wordWidth;
            lineHasWord = true;
            continue;
        }
        // What opens the next line: the blanks that open the paragraph, if the word was first.
        std::u32string_view opening;
        if (lineHasWord) {
            lines->push_back(std::move(line));
        } else if (keepBlanks) {
            opening = blanks;
        }
        const std::int32_t openingWidth = opening.empty() ? 0 : blanksWidth;
        line.assign(opening.begin(), opening.end());
        line.append(word.begin(), word.end());
        lineWidth = openingWidth + wordWidth;
        lineHasWord = true;
        if (lineWidth > width) {
            // Too wide even alone: cut, and the line is full.
            lines->push_back(CutWithEllipsis(line, width, measure));
            line.clear();
            lineWidth = 0;
            lineHasWord = false;
        }
    }
    if (lineHasWord || !line.empty() || lines->size() == linesBefore) {
        lines->push_back(std::move(line));
    }
}

}  // namespace

std::u32string DecodeText(std::string_view text) {
    std::u32string characters;
    characters.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        char32_t character = 0;
        std::size_t length = DecodeSequence(text.substr(i), &character);
        if (length == 0) {
            character = static_cast<std::uint8_t>(text[i]);
            length = 1;
        }
        characters.push_back(character);
        i += length;
    }
    return characters;
}

std::vector<std::u32string> BreakIntoLines(std::u32string_view text, std::int32_t width,
                                           const TextMeasure& measure) {
    std::vector<std::u32string> lines;
    std::size_t start = 0;
    while (true) {
        std::size_t end = text.find(U'\n', start);
        std::u32string paragraph(text.substr(
            start, end == std::u32string_view::npos ? std::u32string_view::npos : end - start));
        std::erase(paragraph, U'\r');
        std::vector<std::u32string> paragraphLines;
        BreakParagraph(paragraph, width, measure, &paragraphLines);
        for (auto& line : paragraphLines)
            lines.push_back(std::move(line));
        if (end == std::u32string_view::npos) break;
        start = end + 1;
    }
    return lines;
}

}  // namespace vorix
