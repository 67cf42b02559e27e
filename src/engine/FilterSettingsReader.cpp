#include "engine/FilterSettingsReader.h"

#include <algorithm>
#include <new>

#include "core/PluginCore.h"
#include "core/SettingsLines.h"
#include "engine/FilterSettingsLines.h"
#include "engine/FilterSettingsTags.h"
#include "engine/FilterSettingsTexts.h"

namespace vorix {
namespace {

constexpr int kLeftSlot = 0;
constexpr int kRightSlot = 1;

[[noreturn]] void Refuse(std::string& failureText, const char* text) {
    failureText = text;
    VORIX_THROW(PluginCore::InvalidSettingsData);
}

// The attribute lines of a document, as the engine's attribute store would take them one after
// another: a single line stays as it stood, several merge into one element, later keys winning.
class AttributeLines {
  public:
    void Add(const std::string& line) {
        if (count_++ == 0) first_ = line;
        ParseAttributeLine(line, merged_);
    }
    void StoreInto(FilterSettingsDocument& doc) const {
        if (count_ == 0) return;
        doc.hasAttributes = true;
        doc.attributesLine = count_ == 1 ? first_ : FormatAttributeLine(merged_);
    }

  private:
    std::size_t count_ = 0;
    std::string first_;
    SettingsAttributes merged_;
};

// Skips to the document's opening line and checks its version.
void FindDocumentStart(std::istream& in, std::string& failureText) {
    std::string line;
    while (ReadSettingsLine(in, line)) {
        if (!Holds(line, kDocumentOpening)) continue;
        if (GetLineAttribute(line, kVersionAttribute) != kFilterSettingsVersion) {
            Refuse(failureText, kFilterSettingsVersionRefused);
        }
        return;
    }
    Refuse(failureText, kNoFilterSettingsFound);
}

// Whether the rate cannot carry the frequency of a description that reported itself beyond the
// limit. Both sides are truncated to whole hertz and computed alike in single precision, so a
// filter exactly at the highest frequency the rate allows stays in range.
bool BeyondRateLimit(const FilterDescription& d, float sampleRate) {
    const auto frequency =
        std::find_if(d.parameters.begin(), d.parameters.end(),
                     [](const auto& p) { return p.first == FilterParameterId::Frequency; });
    if (frequency == d.parameters.end()) VORIX_THROW(PluginCore::InvalidSettingsData);
    const int limit = std::min(static_cast<int>(kHighestDocumentHz),
                               static_cast<int>(kFrequencyLimit * sampleRate));
    return static_cast<int>(sampleRate * frequency->second) > limit;
}

// The flags of a filter line, before its channel and range are known.
uint32_t FilterLineFlags(std::string_view line) {
    RequireLineAttribute(line, kEnabledAttribute);
    uint32_t flags =
        Holds(GetLineAttribute(line, kEnabledAttribute), kTrueText) ? 0u : FilterFlags::Disabled;
    if (Holds(GetLineAttribute(line, kSelectedAttribute), kTrueText))
        flags |= FilterFlags::Selected;
    RequireLineAttribute(line, kChannelAttribute);
    for (const LockAttribute& lock : kLockAttributes) {
        if (GetIntLineAttribute(line, lock.name) != 0) flags |= lock.flag;
    }
    return flags;
}

void FillSlot(FilterSettingsSlot& slot, const FilterDescription& d, uint32_t flags,
              int32_t controlSlot) {
    slot.description = d;
    slot.description.flags = flags;
    slot.controlSlot = controlSlot;
    slot.filled = true;
}

// A "<filter " line and the description below it, into the slot or slots its channel names.
void ReadFilter(std::istream& in, std::string_view line, float sampleRate,
                FilterSettingsElement& element) {
    uint32_t flags = FilterLineFlags(line);
    const int32_t controlSlot = HasLineAttribute(line, kControlSlotAttribute)
                                    ? GetIntLineAttribute(line, kControlSlotAttribute)
                                    : -1;
    const std::string channel = GetLineAttribute(line, kChannelAttribute);
    FilterDescription description;
    if (!ReadFilterDescription(in, description, sampleRate) &&
        BeyondRateLimit(description, sampleRate)) {
        flags |= FilterFlags::OutOfRange;
    }
    if (Holds(channel, kLeftChannelText)) {
        FillSlot(element.slots[kLeftSlot], description, flags | FilterFlags::LeftOnly, controlSlot);
    } else if (Holds(channel, kRightChannelText)) {
        FillSlot(element.slots[kRightSlot], description, flags | FilterFlags::RightOnly,
                 controlSlot);
    } else {
        FillSlot(element.slots[kLeftSlot], description, flags, controlSlot);
        FillSlot(element.slots[kRightSlot], description, flags, controlSlot);
    }
}

// A half that no line gave: the other half's filter, kept in the chain as a place-holder that
// neither processes nor is saved, so that the pair stays a pair.
void MakeHollowCopy(FilterSettingsSlot& empty, const FilterSettingsSlot& other) {
    const uint32_t own = empty.description.flags;
    empty.description = other.description;
    empty.description.flags = own | FilterFlags::ChannelDeleted | FilterFlags::Disabled |
                              (other.description.flags & FilterFlags::OutOfRange);
}

// One filled half tells the other which half it is; a both-channel filter's switch holds for
// both halves.
void PairStereoSlots(FilterSettingsElement& element) {
    FilterSettingsSlot& left = element.slots[kLeftSlot];
    FilterSettingsSlot& right = element.slots[kRightSlot];
    uint32_t& leftFlags = left.description.flags;
    uint32_t& rightFlags = right.description.flags;
    if (left.filled) {
        if (leftFlags & FilterFlags::LeftOnly) {
            rightFlags |= FilterFlags::RightOnly;
        } else if (leftFlags & FilterFlags::Disabled) {
            rightFlags |= FilterFlags::Disabled;
        }
    }
    if (right.filled) {
        if (rightFlags & FilterFlags::RightOnly) {
            leftFlags |= FilterFlags::LeftOnly;
        } else if (rightFlags & FilterFlags::Disabled) {
            leftFlags |= FilterFlags::Disabled;
        }
    }
    if (!left.filled && right.filled) MakeHollowCopy(left, right);
    if (!right.filled && left.filled) MakeHollowCopy(right, left);
}

// A mono instance has one record per element: the left filter, or the right one when the
// element has no left. Moving the right one over, control slot included, leaves slot 1 empty.
void FoldMonoSlots(FilterSettingsElement& element) {
    FilterSettingsSlot& only = element.slots[kLeftSlot];
    if (!only.filled && element.slots[kRightSlot].filled) {
        only = std::move(element.slots[kRightSlot]);
        element.slots[kRightSlot] = FilterSettingsSlot{};
    }
    only.description.flags &= ~(FilterFlags::LeftOnly | FilterFlags::RightOnly);
}

// The lines after a "<filter_element" line up to "</filter_element>" or the end of the stream.
FilterSettingsElement ReadElement(std::istream& in, float sampleRate, int channels) {
    FilterSettingsElement element;
    std::string line;
    while (ReadSettingsLine(in, line) && !Holds(line, kElementClosing)) {
        if (Holds(line, kFilterOpening)) ReadFilter(in, line, sampleRate, element);
    }
    if (channels > 1) {
        PairStereoSlots(element);
    } else {
        FoldMonoSlots(element);
    }
    return element;
}

void RequireSectionsWithinLimit(const FilterSettingsDocument& doc) {
    std::size_t sections = 0;
    for (const FilterSettingsElement& element : doc.elements) {
        for (const FilterSettingsSlot& slot : element.slots) {
            sections += slot.description.numerators.size();
        }
    }
    if (sections > kMaxSectionsPerDocument) VORIX_THROW(PluginCore::InvalidSettingsData);
}

// The lines after the opening line up to the closing line or the end of the stream.
void ReadDocumentBody(std::istream& in, FilterSettingsDocument& doc, float sampleRate,
                      int channels) {
    AttributeLines attributes;
    std::string line;
    while (ReadSettingsLine(in, line) && !Holds(line, kDocumentClosing)) {
        if (Holds(line, kAttributesOpening)) {
            attributes.Add(line);
        } else if (Holds(line, kCompensationGainTag)) {
            doc.leftGain = doc.rightGain = ParseSettingsNumber(RequiredElementText(line));
        } else if (Holds(line, kLeftCompensationGainTag)) {
            doc.leftGain = ParseSettingsNumber(RequiredElementText(line));
            doc.gainsUnlinked = true;
        } else if (Holds(line, kRightCompensationGainTag)) {
            doc.rightGain = ParseSettingsNumber(RequiredElementText(line));
            doc.gainsUnlinked = true;
        } else if (Holds(line, kElementOpening)) {
            RequireLineAttribute(line, kElementNumberAttribute);
            doc.elements.push_back(ReadElement(in, sampleRate, channels));
        }
    }
    attributes.StoreInto(doc);
    RequireSectionsWithinLimit(doc);
}

}  // namespace

FilterSettingsDocument ReadFilterSettingsDocument(std::istream& in, float sampleRate, int channels,
                                                  std::string& failureText) {
    failureText = kFilterSettingsCorrupted;
    try {
        FilterSettingsDocument doc;
        FindDocumentStart(in, failureText);
        ReadDocumentBody(in, doc, sampleRate, channels);
        return doc;
    } catch (const std::bad_alloc&) {
        failureText = kNoMemoryForFilterSettings;
        throw;
    }
}

}  // namespace vorix
