#include "vorix-host/AudioFile.h"

#include <sndfile.h>

#include <cstdio>
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

// libsndfile's reason, without its trailing full stop, so that it ends our sentence.
std::string Reason(SNDFILE* file) {
    std::string text = sf_strerror(file);
    while (!text.empty() && (text.back() == '.' || text.back() == ' '))
        text.pop_back();
    return text;
}

}  // namespace

AudioData ReadAudioFile(const std::string& path, AudioFileFormat& format) {
    SF_INFO info{};
    SoundFile file(sf_open(path.c_str(), SFM_READ, &info));
    if (file == nullptr) {
        throw HostError("The audio file " + path + " could not be read: " + Reason(nullptr) + ".");
    }
    if (info.channels < 1) throw HostError("The audio file " + path + " has no channels.");
    format = info.format;
    AudioData audio;
    audio.sampleRate = info.samplerate;
    audio.channels.assign(static_cast<std::size_t>(info.channels),
                          std::vector<float>(static_cast<std::size_t>(info.frames)));
    std::vector<float> interleaved(static_cast<std::size_t>(kChunkFrames * info.channels));
    for (sf_count_t done = 0; done < info.frames;) {
        const sf_count_t got = sf_readf_float(file.get(), interleaved.data(), kChunkFrames);
        if (got <= 0) throw HostError("The audio file " + path + " ends before its length.");
        for (sf_count_t i = 0; i < got && done + i < info.frames; ++i) {
            for (int c = 0; c < info.channels; ++c) {
                audio.channels[static_cast<std::size_t>(c)][static_cast<std::size_t>(done + i)] =
                    interleaved[static_cast<std::size_t>(i * info.channels + c)];
            }
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
        throw HostError("The audio file " + path + " could not be written: " + Reason(nullptr) +
                        ".");
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
            throw HostError("The audio file " + path +
                            " could not be written: " + Reason(file.get()) + ".");
        }
    }
    if (sf_close(file.release()) != 0) {
        throw HostError("The audio file " + path + " could not be finished.");
    }
    replacement.Commit();
}

}  // namespace vorix
