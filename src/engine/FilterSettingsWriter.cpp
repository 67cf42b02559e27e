#include "engine/FilterSettingsWriter.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ios>
#include <string>

#include "engine/FilterSettingsTags.h"
#include "engine/FilterSettingsTexts.h"

namespace vorix {
namespace {

// Parameter and section values carry nine significant digits, enough to bring every
// single-precision value back unchanged.
constexpr std::streamsize kValuePrecision = 9;

constexpr std::string_view kTab = "\t";

// Sets the stream to the values' form for a scope and puts the caller's form back after it.
class ValueFormat {
  public:
    explicit ValueFormat(std::ostream& out)
        : out_(out), precision_(out.precision(kValuePrecision)), flags_(out.flags()) {
        out_.unsetf(std::ios_base::floatfield | std::ios_base::showpos | std::ios_base::showpoint |
                    std::ios_base::uppercase);
    }
    ValueFormat(const ValueFormat&) = delete;
    ValueFormat& operator=(const ValueFormat&) = delete;
    ~ValueFormat() {
        out_.flags(flags_);
        out_.precision(precision_);
    }

  private:
    std::ostream& out_;
    std::streamsize precision_;
    std::ios_base::fmtflags flags_;
};

// The closing tag that belongs to an opening tag such as "<type>".
void WriteClosing(std::ostream& out, std::string_view openingTag) {
    out << "</" << openingTag.substr(1) << '\n';
}

template <typename Value>
void WriteElement(std::ostream& out, std::string_view indent, std::string_view openingTag,
                  const Value& value) {
    out << indent << openingTag << value;
    WriteClosing(out, openingTag);
}

template <typename Value>
void WriteParameterElement(std::ostream& out, std::string_view indent, FilterParameterId id,
                           const Value& value) {
    const std::string_view key = FilterParameterKey(id);
    out << indent << '<' << key << '>' << value << "</" << key << ">\n";
}

// A whole-number parameter truncated as SetFilterParameter truncates it; a value no 32-bit
// number holds counts as 0.
int32_t WholeNumber(float value) {
    constexpr float kBound = 2147483648.0f;
    return value > -kBound && value < kBound ? static_cast<int32_t>(value) : 0;
}

// "fundamental", "," if the text is not empty, "odd", "," if the text is not empty, "even": the
// commas stand as they come, so "fundamental,," and "odd," are genuine forms.
std::string ComponentsText(float value) {
    const int32_t components = WholeNumber(value);
    std::string text;
    if (components & kFundamentalComponent) text += kFundamentalWord;
    if (!text.empty()) text += ',';
    if (components & kOddComponents) text += kOddWord;
    if (!text.empty()) text += ',';
    if (components & kEvenComponents) text += kEvenWord;
    return text;
}

// Hertz with six decimals. The product is taken in single precision, as the engine holds both
// the normalised frequency and the rate, and only then widened for printing: that gives back the
// hertz a document was read with far more often than a double-precision product does.
std::string HertzText(float normalised, float sampleRate) {
    char text[64];
    std::snprintf(text, sizeof text, "%.6f", static_cast<double>(normalised * sampleRate));
    return text;
}

void WriteParameter(std::ostream& out, std::string_view indent, FilterParameterId id, float value,
                    float sampleRate) {
    switch (id) {
        case FilterParameterId::Frequency:
            return WriteParameterElement(out, indent, id, HertzText(value, sampleRate));
        case FilterParameterId::HarmonicComponents:
            return WriteParameterElement(out, indent, id, ComponentsText(value));
        case FilterParameterId::ComponentGain:
            return WriteParameterElement(out, indent, id,
                                         WholeNumber(value) ? kDecayingWord : kConstantWord);
        case FilterParameterId::ReverseGainDecay:
            return WriteParameterElement(out, indent, id,
                                         WholeNumber(value) ? kTrueText : kFalseText);
        default:
            return WriteParameterElement(out, indent, id, value);
    }
}

// "<b0>" to "<b2>", or the same of "a", one line each.
void WriteCoefficients(std::ostream& out, std::string_view indent, std::string_view opening,
                       const std::array<float, 3>& values) {
    for (std::size_t k = 0; k < values.size(); ++k) {
        const char digit = static_cast<char>('0' + k);
        out << indent << opening << digit << '>' << values[k] << "</" << opening.substr(1) << digit
            << ">\n";
    }
}

void WriteSections(std::ostream& out, const FilterDescription& d, const std::string& indent) {
    const std::string sectionIndent = indent + '\t';
    const std::string valueIndent = sectionIndent + '\t';
    out << indent << kSectionListTag << '\n';
    for (std::size_t i = 0; i < d.numerators.size(); ++i) {
        out << sectionIndent << kSectionTag << '\n';
        // A default section's denominator stands in for one the description lacks.
        const std::array<float, 3> a =
            i < d.denominators.size() ? d.denominators[i] : std::array<float, 3>{1.0f, 0.0f, 0.0f};
        WriteCoefficients(out, valueIndent, kNumeratorOpening, d.numerators[i]);
        WriteCoefficients(out, valueIndent, kDenominatorOpening, a);
        out << sectionIndent;
        WriteClosing(out, kSectionTag);
    }
    out << indent;
    WriteClosing(out, kSectionListTag);
}

// A name ends at anything that would end its element or its line when read back.
std::string_view WritableName(std::string_view name) {
    return name.substr(0, name.find_first_of("<\r\n"));
}

std::string_view ChannelText(uint32_t flags) {
    if (flags & FilterFlags::LeftOnly) return kLeftChannelText;
    if (flags & FilterFlags::RightOnly) return kRightChannelText;
    return kBothChannelsText;
}

void WriteAttribute(std::ostream& out, std::string_view name, std::string_view value) {
    out << name << "=\"" << value << '"';
}

// One blank after enabled and selected, none after channel, one ahead of each later attribute.
void WriteFilterLine(std::ostream& out, const FilterSettingsSlot& slot) {
    const uint32_t flags = slot.description.flags;
    out << kTab << kTab << kFilterOpening;
    WriteAttribute(out, kEnabledAttribute, flags & FilterFlags::Disabled ? kFalseText : kTrueText);
    out << ' ';
    if (flags & FilterFlags::Selected) {
        WriteAttribute(out, kSelectedAttribute, kTrueText);
        out << ' ';
    }
    WriteAttribute(out, kChannelAttribute, ChannelText(flags));
    for (const LockAttribute& lock : kLockAttributes) {
        if ((flags & lock.flag) == 0) continue;
        out << ' ';
        WriteAttribute(out, lock.name, "1");
        if (lock.blankBehind) out << ' ';
    }
    if (slot.controlSlot >= 0) {
        out << ' ';
        WriteAttribute(out, kControlSlotAttribute, std::to_string(slot.controlSlot));
    }
    out << ">\n";
}

// A slot's filter line and description, unless it is empty or a hollow half.
void WriteSlot(std::ostream& out, const FilterSettingsSlot& slot, float sampleRate) {
    if (!slot.filled || (slot.description.flags & FilterFlags::ChannelDeleted)) return;
    WriteFilterLine(out, slot);
    WriteFilterDescription(out, slot.description, "\t\t\t", sampleRate);
    out << kTab << kTab << kFilterClosing << '\n';
}

void WriteElements(std::ostream& out, const FilterSettingsDocument& doc, float sampleRate) {
    for (std::size_t i = 0; i < doc.elements.size(); ++i) {
        const FilterSettingsSlot(&slots)[2] = doc.elements[i].slots;
        out << kTab << kElementOpening << '"' << std::to_string(i + 1) << "\">\n";
        WriteSlot(out, slots[0], sampleRate);
        // A both-channel pair is written once, with its left values.
        if (slots[0].description.flags & (FilterFlags::LeftOnly | FilterFlags::RightOnly)) {
            WriteSlot(out, slots[1], sampleRate);
        }
        out << kTab << kElementClosing << '\n';
    }
}

}  // namespace

void WriteFilterDescription(std::ostream& out, const FilterDescription& d, std::string_view indent,
                            float sampleRate) {
    const std::string inner = std::string(indent) + '\t';
    const std::string entries = inner + '\t';
    out << indent << kDescriptionTag << '\n';
    WriteElement(out, inner, kTypeTag, FilterTypeKey(d.type));
    WriteElement(out, inner, kNameTag, WritableName(d.name));
    out << inner << kParameterListTag << '\n';
    {
        const ValueFormat format(out);
        if (d.type == kExternalFilter) WriteSections(out, d, entries);
        for (const auto& [id, value] : d.parameters) {
            WriteParameter(out, entries, id, value, sampleRate);
        }
    }
    out << inner;
    WriteClosing(out, kParameterListTag);
    out << indent;
    WriteClosing(out, kDescriptionTag);
}

void WriteFilterSettingsDocument(std::ostream& out, const FilterSettingsDocument& doc,
                                 float sampleRate) {
    out << kFilterSettingsNotice << '\n';
    out << kDocumentOpening << ' ' << kVersionAttribute << "=\"" << kFilterSettingsVersion
        << "\">\n";
    if (doc.hasAttributes) {
        const std::string_view line = doc.attributesLine;
        out << kTab << line.substr(std::min(line.size(), line.find_first_not_of(" \t"))) << '\n';
    }
    WriteElement(out, kTab, kCompensationGainTag, doc.leftGain);
    if (doc.gainsUnlinked) {
        WriteElement(out, kTab, kLeftCompensationGainTag, doc.leftGain);
        WriteElement(out, kTab, kRightCompensationGainTag, doc.rightGain);
    }
    WriteElements(out, doc, sampleRate);
    out << kDocumentClosing;
}

}  // namespace vorix
