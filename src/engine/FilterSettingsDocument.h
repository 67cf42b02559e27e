#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "dsp/FilterDescription.h"

namespace vorix {

// One configuration of the engine as a filter settings document holds it, apart from any chain:
// what the reader hands to the engine and what the engine hands to the writer.

// One channel's filter of an element.
struct FilterSettingsSlot {
    FilterDescription description;  // description.flags holds the record's flag word
    int32_t controlSlot = -1;       // automation slot, -1 for none
    bool filled = false;            // a <filter> line was read (or is to be written) for it
};

// One filter_element: slot 0 is the left channel (or the only one), slot 1 the right. After
// reading, on a stereo instance, a slot that no line filled is the hollow ChannelDeleted copy of
// the other; on a mono instance only slot 0 makes a record.
struct FilterSettingsElement {
    FilterSettingsSlot slots[2];
};

struct FilterSettingsDocument {
    bool hasAttributes = false;
    // Read: the attributes line as it stood (several lines are merged into one element). Write:
    // the element as PluginCore::FormatAttributes gives it, "<attributes>..</attributes>".
    std::string attributesLine;
    float leftGain = 0.0f;  // decibels
    float rightGain = 0.0f;
    bool gainsUnlinked = false;  // read: a left_/right_ line was seen; write: emit them
    std::vector<FilterSettingsElement> elements;
};

}  // namespace vorix
