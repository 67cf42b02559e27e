#pragma once

#include <string>

#include "vorix-host/AudioData.h"

namespace vorix {

// The file format an output takes: libsndfile's format word. 0 asks for 32-bit float WAV.
using AudioFileFormat = int;

// Reads a whole audio file of any format libsndfile reads; `format` receives the file's. Throws
// HostError when the file cannot be read or holds no channels. Main thread.
AudioData ReadAudioFile(const std::string& path, AudioFileFormat& format);

// Writes `audio` to `path` in `format`. The file appears whole or not at all: it is written
// under a temporary name beside its place and renamed at the end. Throws HostError. Main thread.
void WriteAudioFile(const std::string& path, const AudioData& audio, AudioFileFormat format);

}  // namespace vorix
