#pragma once

#include <sndfile.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vorix::cli {

// An audio file open for reading through libsndfile, read in blocks of interleaved float frames
// (integer samples scaled to -1..1). Main thread; allocates.
class AudioFileReader {
  public:
    // Throws ToolFailure with one sentence when the path is missing, unreadable, a directory, or
    // not audio that libsndfile knows.
    explicit AudioFileReader(const std::string& path);
    ~AudioFileReader();
    AudioFileReader(const AudioFileReader&) = delete;
    AudioFileReader& operator=(const AudioFileReader&) = delete;

    // The file's layout, as its header tells it.
    int Channels() const noexcept { return info_.channels; }
    int SampleRate() const noexcept { return info_.samplerate; }
    std::int64_t Frames() const noexcept { return info_.frames; }
    // libsndfile's format word: container and sample encoding.
    int Format() const noexcept { return info_.format; }

    // Reads up to `frames` frames; fewer only at the end of the file. Throws ToolFailure when the
    // file cannot be read further.
    std::int64_t Read(float* interleaved, std::int64_t frames);

  private:
    std::string path_;
    SF_INFO info_{};
    SNDFILE* file_ = nullptr;
};

// An audio file being written through libsndfile onto a descriptor that the caller owns. For an
// integer encoding the tool quantises itself: each sample is rounded to the nearest step of the
// file's depth and clipped at full scale. libsndfile's own conversion differs between containers
// (a WAV file's 16-bit samples are cut down, a FLAC file's rounded), and a render is to give the
// same samples whatever the container. Float encodings take the samples as they are; the others
// (u-law, A-law) take them clipped at full scale. Main thread; allocates.
class AudioFileWriter {
  public:
    // `displayPath` names the file in messages. Throws ToolFailure when libsndfile refuses.
    AudioFileWriter(int descriptor, const std::string& displayPath, int format, int sampleRate,
                    int channels);
    ~AudioFileWriter();
    AudioFileWriter(const AudioFileWriter&) = delete;
    AudioFileWriter& operator=(const AudioFileWriter&) = delete;

    // Throws ToolFailure when the frames cannot all be written (a full disk, for one).
    void Write(const float* interleaved, std::int64_t frames);
    // Completes the file's header. Throws ToolFailure on failure.
    void Close();

  private:
    std::string path_;
    SNDFILE* file_ = nullptr;
    int channels_ = 0;
    int integerBits_ = 0;         // the depth of an integer encoding, else 0
    bool floatEncoding_ = false;  // float samples pass as they are, beyond full scale too
    std::vector<int> quantised_;  // integer samples at full 32-bit scale, for libsndfile
    std::vector<float> clipped_;  // samples for the other encodings, within full scale
};

// The container that the extension of `outputPath` names (.wav, .aif or .aiff, .flac). Throws
// UsageError for a name of another kind. Any thread; pure.
int ContainerFor(const std::string& outputPath);

// The format word for writing a file of `container` with the input's sample encoding, or 32-bit
// float when `asFloat`; the input's byte order is kept within its own container. Throws
// ToolFailure for an encoding the container cannot hold. Any thread; pure.
int OutputFormatFor(int container, int inputFormat, bool asFloat);

// A sample encoding in words for messages ("16-bit", "32-bit float"). Any thread; pure.
std::string EncodingName(int format);

}  // namespace vorix::cli
