#pragma once

#include <ostream>
#include <string_view>

#include "dsp/FilterDescription.h"
#include "engine/FilterSettingsDocument.h"

namespace vorix {

// Writes a filter settings document, one element per line, in the exact layout the reader and
// every earlier document rely on: the maker's notice, the opening line with the version, the
// attributes line if the document has one, the compensation gain (and the left and right gains
// when unlinked), one filter_element per element numbered from 1 with a filter for each filled
// slot that is not ChannelDeleted, and the closing line. Every line ends in a line feed except the
// closing one: whoever stores the text adds the last. Frequencies are written in hertz at
// `sampleRate`. The stream's precision and format flags are left as they were.
// Editor or host thread; allocates a little; never touches the audio.
void WriteFilterSettingsDocument(std::ostream& out, const FilterSettingsDocument& doc,
                                 float sampleRate);

// Writes the description block of one filter, each line behind `indent`, from
// "<filter_description>" to "</filter_description>". Editor or host thread.
void WriteFilterDescription(std::ostream& out, const FilterDescription& d, std::string_view indent,
                            float sampleRate);

}  // namespace vorix
