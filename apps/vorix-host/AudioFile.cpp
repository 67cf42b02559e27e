#include "vorix-host/AudioFile.h"

#include <sndfile.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include "vorix-host/FileReplacement.h"
#include "vorix-host/HostError.h"

namespace vorix {
namespace {

constexpr AudioFileFormat kDefaultFormat = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
// Frames moved between the file and the channel buffers at once.
constexpr sf_count_t kChunkFrames = 8192;

struct SoundFileCloser {
    void operator()(SNDFILE* file) const noexcept { sf_close(file); }
};
using SoundFile = std::unique_ptr<SNDFILE, SoundFileCloser>;

// The system's reason for a failed libsndfile call, as the end of a sentence; libsndfile's own
// wording, written for programmers, is never shown.
std::string SystemPart(SNDFILE* file, int errorNumber) {
    if (sf_error(file) != SF_ERR_SYSTEM || errorNumber == 0) return ".";
    return std::string(": ") + std::strerror(errorNumber) + ".";
}

// Frames made room for ahead of the data: a header that promises more than the file holds costs
// no more memory than the file's true length.
constexpr std::size_t kFramesReservedAhead = std::size_t{1} << 20;

}  // namespace

AudioData ReadAudioFile(const std::string& path, AudioFileFormat& format) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        const std::string reason = std::strerror(errno);
        throw HostError("The audio file " + path + " could not be read: " + reason + ".");
    }
    if (S_ISDIR(status.st_mode)) throw HostError("The audio file " + path + " is a folder.");
    SF_INFO info{};
    SoundFile file(sf_open(path.c_str(), SFM_READ, &info));
    if (file == nullptr) {
        const int reason = errno;
        if (sf_error(nullptr) == SF_ERR_SYSTEM) {
            throw HostError("The audio file " + path + " could not be read" +
                            SystemPart(nullptr, reason));
        }
        throw HostError("The file " + path +
                        " is not audio the host can read: its kind is unknown, or its header "
                        "is damaged.");
    }
    if (info.channels < 1) throw HostError("The audio file " + path + " has no channels.");
    format = info.format;
    AudioData audio;
    audio.sampleRate = info.samplerate;
    audio.channels.resize(static_cast<std::size_t>(info.channels));
    for (std::vector<float>& channel : audio.channels)
        channel.reserve(std::min(static_cast<std::size_t>(info.frames), kFramesReservedAhead));
    std::vector<float> interleaved(static_cast<std::size_t>(kChunkFrames * info.channels));
    for (sf_count_t done = 0; done < info.frames;) {
        const sf_count_t got = sf_readf_float(file.get(), interleaved.data(), kChunkFrames);
        if (got <= 0) throw HostError("The audio file " + path + " ends before its length.");
        const sf_count_t kept = std::min(got, info.frames - done);
        for (int c = 0; c < info.channels; ++c) {
            std::vector<float>& channel = audio.channels[static_cast<std::size_t>(c)];
            for (sf_count_t i = 0; i < kept; ++i)
                channel.push_back(interleaved[static_cast<std::size_t>(i * info.channels + c)]);
        }
        done += got;
    }
    return audio;
}

void WriteAudioFile(const std::string& path, const AudioData& audio, AudioFileFormat format) {
    SF_INFO info{};
    info.samplerate = audio.sampleRate;
    info.channels = audio.ChannelCount();
    info.format = format != 0 ? format : kDefaultFormat;
    if (sf_format_check(&info) == 0) info.format = kDefaultFormat;
    FileReplacement replacement(path);
    SoundFile file(sf_open(replacement.TemporaryPath().c_str(), SFM_WRITE, &info));
    if (file == nullptr) {
        const int reason = errno;
        throw HostError("The audio file " + path + " could not be written" +
                        SystemPart(nullptr, reason));
    }
    sf_command(file.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
    const auto frames = audio.Frames();
    std::vector<float> interleaved(static_cast<std::size_t>(kChunkFrames * info.channels));
    for (std::int64_t start = 0; start < frames; start += kChunkFrames) {
        const std::int64_t count = std::min<std::int64_t>(kChunkFrames, frames - start);
        for (std::int64_t i = 0; i < count; ++i) {
            for (int c = 0; c < info.channels; ++c) {
                interleaved[static_cast<std::size_t>(i * info.channels + c)] =
                    audio
                        .channels[static_cast<std::size_t>(c)][static_cast<std::size_t>(start + i)];
            }
        }
        if (sf_writef_float(file.get(), interleaved.data(), count) != count) {
            const int reason = errno;
            throw HostError("The audio file " + path + " could not be written" +
                            SystemPart(file.get(), reason));
        }
    }
    if (sf_close(file.release()) != 0) {
        throw HostError("The audio file " + path + " could not be finished.");
    }
    replacement.Commit();
}

}  // namespace vorix
