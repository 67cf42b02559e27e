#pragma once

#include <istream>
#include <string>

#include "dsp/FilterDescription.h"
#include "engine/FilterSettingsDocument.h"

namespace vorix {

// Reads a filter settings document: skips to the "<vorix_filter_settings" line, checks its
// version, and reads attributes, gains and elements up to the closing line or the end of the
// stream. Each element comes back with its two slots settled for `channels` (1 mono, 2 stereo):
// flags of the halves of a split pair, hollow ChannelDeleted copies, OutOfRange where the sample
// rate cannot carry a frequency. Making records, filter numbers and control slots is the caller's.
//
// A structural failure raises PluginCore::InvalidSettingsData with `failureText` set to what the
// user must read; running out of memory lets std::bad_alloc through with the memory text set.
// `failureText` is set to the general text on entry and means something only when the call
// throws. Lines may end in "\r\n". `sampleRate` is the instance's, positive. Editor or host thread;
// allocates; never touches the audio.
FilterSettingsDocument ReadFilterSettingsDocument(std::istream& in, float sampleRate, int channels,
                                                  std::string& failureText);

// Reads one filter description from the lines after its "<filter_description>" line up to and
// including "</filter_description>" (or the end of the stream): type, name cut to
// kMaxFilterNameLength, parameters one entry per id in ascending bit order (a repeated line
// replaces the earlier value), frequencies normalised by `sampleRate` after a cap at 20000 Hz,
// and an External filter's sections. Leaves `out.flags` alone and clears the rest first.
// True if every frequency came out below the system's frequency limit. A malformed section line
// raises PluginCore::InvalidSettingsData. Editor or host thread; allocates.
bool ReadFilterDescription(std::istream& in, FilterDescription& out, float sampleRate);

}  // namespace vorix
