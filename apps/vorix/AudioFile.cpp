#include "vorix/AudioFile.h"

#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <utility>
#include <vector>

#include "vorix/ToolErrors.h"

namespace vorix::cli {
namespace {

struct ContainerByExtension {
    const char* extension;
    int container;
};
constexpr ContainerByExtension kContainers[] = {
    {".wav", SF_FORMAT_WAV},
    {".aif", SF_FORMAT_AIFF},
    {".aiff", SF_FORMAT_AIFF},
    {".flac", SF_FORMAT_FLAC},
};

struct IntegerEncoding {
    int subtype;
    int bits;
};
constexpr IntegerEncoding kIntegerEncodings[] = {
    {SF_FORMAT_PCM_S8, 8},  {SF_FORMAT_PCM_U8, 8},  {SF_FORMAT_PCM_16, 16},
    {SF_FORMAT_PCM_24, 24}, {SF_FORMAT_PCM_32, 32},
};

struct EncodingText {
    int subtype;
    const char* words;
};
constexpr EncodingText kEncodings[] = {
    {SF_FORMAT_PCM_S8, "8-bit"},
    {SF_FORMAT_PCM_U8, "unsigned 8-bit"},
    {SF_FORMAT_PCM_16, "16-bit"},
    {SF_FORMAT_PCM_24, "24-bit"},
    {SF_FORMAT_PCM_32, "32-bit integer"},
    {SF_FORMAT_FLOAT, "32-bit float"},
    {SF_FORMAT_DOUBLE, "64-bit float"},
    {SF_FORMAT_ULAW, "u-law"},
    {SF_FORMAT_ALAW, "A-law"},
};

std::string Quoted(const std::string& path) {
    return "\"" + path + "\"";
}

// What a failed libsndfile call tells the user: the system's reason when the system failed it,
// and nothing of libsndfile's own wording, which is written for programmers.
std::string SystemPart(SNDFILE* file, int errorNumber) {
    if (sf_error(file) != SF_ERR_SYSTEM || errorNumber == 0) return {};
    return ": " + SystemReason(errorNumber);
}

// Checked before libsndfile, which tells a missing file and a text file apart less clearly.
void CheckReadable(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        throw ToolFailure("cannot read " + Quoted(path) + ": " + SystemReason(errno));
    }
    if (S_ISDIR(status.st_mode)) {
        throw ToolFailure(Quoted(path) + " is a folder, not an audio file");
    }
    std::FILE* probe = std::fopen(path.c_str(), "rb");
    if (probe == nullptr) {
        throw ToolFailure("cannot read " + Quoted(path) + ": " + SystemReason(errno));
    }
    std::fclose(probe);
}

std::string ExtensionOf(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

int IntegerBits(int format) {
    for (const IntegerEncoding& encoding : kIntegerEncodings) {
        if (encoding.subtype == (format & SF_FORMAT_SUBMASK)) return encoding.bits;
    }
    return 0;
}

// Samples rounded to the nearest step of `bits` (ties to even), clipped to the steps that exist,
// and placed at the top of 32 bits, where libsndfile takes its integer samples from. What is not
// a number becomes silence.
void Quantise(const float* samples, std::size_t count, int bits, int* out) {
    const double steps = std::ldexp(1.0, bits - 1);
    const std::int64_t placement = std::int64_t{1} << (32 - bits);
    for (std::size_t i = 0; i < count; ++i) {
        const double rounded = std::isnan(samples[i]) ? 0.0 : std::nearbyint(samples[i] * steps);
        const double clipped = std::clamp(rounded, -steps, steps - 1.0);
        out[i] = static_cast<int>(static_cast<std::int64_t>(clipped) * placement);
    }
}

bool CanHold(int format) {
    SF_INFO probe{};
    probe.format = format;
    probe.channels = 1;
    probe.samplerate = 48000;
    return sf_format_check(&probe) != 0;
}

}  // namespace

AudioFileReader::AudioFileReader(const std::string& path) : path_(path) {
    CheckReadable(path);
    file_ = sf_open(path.c_str(), SFM_READ, &info_);
    if (file_ == nullptr) {
        const int reason = errno;
        if (sf_error(nullptr) == SF_ERR_SYSTEM) {
            throw ToolFailure("cannot read " + Quoted(path) + SystemPart(nullptr, reason));
        }
        throw ToolFailure(Quoted(path) +
                          " is not an audio file that can be read: its kind is unknown, or its "
                          "header is damaged");
    }
}

AudioFileReader::~AudioFileReader() {
    if (file_ != nullptr) sf_close(file_);
}

std::int64_t AudioFileReader::Read(float* interleaved, std::int64_t frames) {
    const sf_count_t read = sf_readf_float(file_, interleaved, frames);
    if (read < frames && sf_error(file_) != SF_ERR_NO_ERROR) {
        const int reason = errno;
        throw ToolFailure("cannot read " + Quoted(path_) + " to its end" +
                          SystemPart(file_, reason));
    }
    return read;
}

AudioFileWriter::AudioFileWriter(int descriptor, const std::string& displayPath, int format,
                                 int sampleRate, int channels)
    : path_(displayPath),
      integerBits_(IntegerBits(format)),
      floatEncoding_((format & SF_FORMAT_SUBMASK) == SF_FORMAT_FLOAT ||
                     (format & SF_FORMAT_SUBMASK) == SF_FORMAT_DOUBLE) {
    SF_INFO info{};
    info.format = format;
    info.samplerate = sampleRate;
    info.channels = channels;
    channels_ = channels;
    file_ = sf_open_fd(descriptor, SFM_WRITE, &info, SF_FALSE);
    if (file_ == nullptr) {
        const int reason = errno;
        throw ToolFailure("cannot write " + Quoted(path_) + SystemPart(nullptr, reason));
    }
}

AudioFileWriter::~AudioFileWriter() {
    if (file_ != nullptr) sf_close(file_);
}

void AudioFileWriter::Write(const float* interleaved, std::int64_t frames) {
    const std::size_t count =
        static_cast<std::size_t>(frames) * static_cast<std::size_t>(channels_);
    sf_count_t written = 0;
    if (integerBits_ > 0) {
        quantised_.resize(count);
        Quantise(interleaved, count, integerBits_, quantised_.data());
        written = sf_writef_int(file_, quantised_.data(), frames);
    } else if (floatEncoding_) {
        written = sf_writef_float(file_, interleaved, frames);
    } else {
        // Companded and compressed encodings have no room beyond full scale.
        clipped_.assign(interleaved, interleaved + count);
        for (float& sample : clipped_)
            sample = std::isnan(sample) ? 0.0f : std::clamp(sample, -1.0f, 1.0f);
        written = sf_writef_float(file_, clipped_.data(), frames);
    }
    if (written != frames) {
        const int reason = errno;
        throw ToolFailure("cannot write " + Quoted(path_) + SystemPart(file_, reason));
    }
}

void AudioFileWriter::Close() {
    SNDFILE* file = std::exchange(file_, nullptr);
    if (sf_close(file) != 0) throw ToolFailure("cannot finish writing " + Quoted(path_));
}

int ContainerFor(const std::string& outputPath) {
    const auto* found =
        std::find_if(std::begin(kContainers), std::end(kContainers),
                     [&](const auto& c) { return ExtensionOf(outputPath) == c.extension; });
    if (found == std::end(kContainers)) {
        throw UsageError(
            "the output's name must end in .wav, .aif, .aiff or .flac to say its "
            "format, not " +
            Quoted(outputPath));
    }
    return found->container;
}

int OutputFormatFor(int container, int inputFormat, bool asFloat) {
    const int encoding = asFloat ? SF_FORMAT_FLOAT : (inputFormat & SF_FORMAT_SUBMASK);
    // The input's byte order is kept when the container is the input's own.
    const int byteOrder =
        (inputFormat & SF_FORMAT_TYPEMASK) == container ? (inputFormat & SF_FORMAT_ENDMASK) : 0;
    const int format = container | encoding | byteOrder;
    if (CanHold(format)) return format;
    std::string others;
    std::vector<int> offered{container};  // each container once, by its first extension
    for (const ContainerByExtension& other : kContainers) {
        if (std::find(offered.begin(), offered.end(), other.container) != offered.end()) continue;
        if (!CanHold(other.container | encoding)) continue;
        others += (others.empty() ? "" : " or ") + std::string(other.extension);
        offered.push_back(other.container);
    }
    const auto* named = std::find_if(std::begin(kContainers), std::end(kContainers),
                                     [&](const auto& c) { return c.container == container; });
    throw ToolFailure(
        "a " + std::string(named->extension) + " file cannot hold " + EncodingName(encoding) +
        " samples; " +
        (others.empty() ? "add --float and name the output .wav" : "name the output " + others));
}

std::string EncodingName(int format) {
    const int subtype = format & SF_FORMAT_SUBMASK;
    for (const EncodingText& encoding : kEncodings) {
        if (encoding.subtype == subtype) return encoding.words;
    }
    return "this encoding's";
}

}  // namespace vorix::cli
