#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sndfile.h>
#include <unistd.h>

#include <cmath>
#include <complex>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "core/CoreTestSupport.h"
#include "dsp/DenormalGuard.h"
#include "host/ZORVorixMetaClass.h"
#include "vorix/AudioFile.h"
#include "vorix/CommandLine.h"

namespace vorix::test {

namespace fs = std::filesystem;

// A whole command run in-process.
struct RunResult {
    int status = -1;
    std::string out;
    std::string err;
};

inline RunResult RunTool(std::vector<std::string> args) {
    std::ostringstream out, err;
    RunResult result;
    result.status = cli::RunVorix(args, out, err);
    result.out = out.str();
    result.err = err.str();
    return result;
}

inline int LineCount(const std::string& text) {
    return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

// A fresh folder of the test's own, removed with everything in it at the end.
class TempFolder {
  public:
    TempFolder() {
        std::string pattern = (fs::temp_directory_path() / "vorix-cli-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    ~TempFolder() { fs::remove_all(path_); }
    std::string operator/(const std::string& name) const { return (path_ / name).string(); }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(path_))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

  private:
    fs::path path_;
};

// Interleaved audio as a file holds it.
struct Audio {
    int channels = 0;
    int rate = 0;
    std::vector<float> samples;
    std::size_t Frames() const { return samples.size() / static_cast<std::size_t>(channels); }
};

// Music-like test audio: a few tones and a little noise at about -12 dBFS, different per channel.
inline Audio TestAudio(int channels, int rate, double seconds) {
    Audio audio{channels, rate, {}};
    const auto frames = static_cast<std::size_t>(seconds * rate);
    std::uint32_t noise = 12345;
    for (std::size_t i = 0; i < frames; ++i) {
        const double t = static_cast<double>(i) / rate;
        for (int c = 0; c < channels; ++c) {
            noise = noise * 1664525u + 1013904223u;
            const double n = (static_cast<double>(noise >> 8) / (1 << 24) - 0.5) * 0.05;
            const double v = 0.1 * std::sin(6.2831853 * (55.0 + 40 * c) * t) +
                             0.08 * std::sin(6.2831853 * 440.0 * t + c) +
                             0.05 * std::sin(6.2831853 * 3150.0 * t) + n;
            audio.samples.push_back(static_cast<float>(v));
        }
    }
    return audio;
}

inline void WriteAudio(const std::string& path, const Audio& audio, int format) {
    SF_INFO info{};
    info.channels = audio.channels;
    info.samplerate = audio.rate;
    info.format = format;
    SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
    ASSERT_NE(file, nullptr) << sf_strerror(nullptr);
    sf_command(file, SFC_SET_CLIPPING, nullptr, SF_TRUE);
    sf_writef_float(file, audio.samples.data(), static_cast<sf_count_t>(audio.Frames()));
    sf_close(file);
}

// Writes as the tool writes: the render path can then be compared bit for bit apart from the
// file's quantisation, which a test of its own holds to its rule.
inline void WriteLikeTheTool(const std::string& path, const Audio& audio, int format) {
    const int descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC, 0644);
    ASSERT_GE(descriptor, 0);
    cli::AudioFileWriter writer(descriptor, path, format, audio.rate, audio.channels);
    writer.Write(audio.samples.data(), static_cast<std::int64_t>(audio.Frames()));
    writer.Close();
    close(descriptor);
}

// Integer samples as the file holds them, at the top of 32 bits.
inline std::vector<int> ReadIntegers(const std::string& path) {
    SF_INFO info{};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    std::vector<int> samples(static_cast<std::size_t>(info.frames * info.channels));
    sf_readf_int(file, samples.data(), info.frames);
    sf_close(file);
    return samples;
}

inline Audio ReadAudio(const std::string& path, int* format = nullptr) {
    SF_INFO info{};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    if (file == nullptr) {
        ADD_FAILURE() << "cannot read " << path;
        return {};
    }
    Audio audio{info.channels, info.samplerate, {}};
    audio.samples.resize(static_cast<std::size_t>(info.frames * info.channels));
    sf_readf_float(file, audio.samples.data(), info.frames);
    if (format != nullptr) *format = info.format;
    sf_close(file);
    return audio;
}

inline void WriteText(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

// The text of one factory program, cut from the product's document by its opening and closing
// lines: what the program's settings file holds.
inline std::string FactoryProgramText(int program) {
    const std::string document = ZORVorixMetaClass().GetFactoryPrograms();
    const std::string opening = "<program number=\"" + std::to_string(program) + "\"";
    const std::size_t start = document.find('\n', document.find(opening)) + 1;
    return document.substr(start, document.find("</program>", start) - start);
}

// A render done in-process through the core, the reference the tool is held to: the host's
// set-up steps, the settings through the preset chunk, host parameter changes by table index,
// blocks of `blockSize` in mode 0, and the guard noise from where a fresh process starts it.
struct ReferenceRender {
    std::string settings;                            // empty: the instance's own filters
    std::vector<std::pair<int32_t, float>> changes;  // parameter index, value
    int32_t blockSize = 4096;

    Audio Render(const Audio& input) const {
        SetMetaClassMaker([] { return std::make_unique<ZORVorixMetaClass>(); });
        MetaClassReference product;
        TestPlatform platform;
        std::unique_ptr<PluginCore> core =
            product.get()->CreateCore(&platform, {input.channels, input.channels});
        core->CaptureDefaultSettings();
        core->ResetAudioState();
        core->SetSampleRate(static_cast<float>(input.rate));
        core->SetBlockSize(blockSize);
        core->Start();
        if (!settings.empty())
            core->SetChunk(settings.data(), static_cast<int32_t>(settings.size()), true);
        for (const auto& [index, value] : changes)
            core->SetParameterByIndex(index, value);
        EXPECT_TRUE(platform.messages.Messages().empty());
        SetGuardNoiseSeed(1);
        return Process(*core, input);
    }

  private:
    Audio Process(PluginCore& core, const Audio& input) const {
        Audio output = input;
        const auto channels = static_cast<std::size_t>(input.channels);
        std::vector<std::vector<float>> in(channels), out(channels);
        for (std::size_t done = 0; done < input.Frames();
             done += static_cast<std::size_t>(blockSize)) {
            const std::size_t n =
                std::min<std::size_t>(static_cast<std::size_t>(blockSize), input.Frames() - done);
            float* inPointers[2];
            float* outPointers[2];
            for (std::size_t c = 0; c < channels; ++c) {
                in[c].resize(n);
                out[c].resize(n);
                for (std::size_t i = 0; i < n; ++i)
                    in[c][i] = input.samples[(done + i) * channels + c];
                inPointers[c] = in[c].data();
                outPointers[c] = out[c].data();
            }
            core.Process(inPointers, outPointers, static_cast<int32_t>(n), false, 0);
            for (std::size_t c = 0; c < channels; ++c)
                for (std::size_t i = 0; i < n; ++i)
                    output.samples[(done + i) * channels + c] = out[c][i];
        }
        return output;
    }
};

// The amplitude of the sine at `frequency` in one channel over the frames from `first` on: one
// Hann-windowed bin of the Fourier transform, summed directly.
inline double ToneAmplitudeOf(const Audio& audio, int channel, double frequency,
                              std::size_t first) {
    std::complex<double> sum;
    double windowSum = 0.0;
    const std::size_t count = audio.Frames() - first;
    for (std::size_t i = 0; i < count; ++i) {
        const double w = 0.5 - 0.5 * std::cos(6.283185307179586 * static_cast<double>(i) / count);
        const double x = audio.samples[(first + i) * static_cast<std::size_t>(audio.channels) +
                                       static_cast<std::size_t>(channel)];
        sum +=
            w * x *
            std::polar(1.0, -6.283185307179586 * frequency * static_cast<double>(i) / audio.rate);
        windowSum += w;
    }
    return 2.0 * std::abs(sum) / windowSum;
}

// The rows of a response CSV after its header: frequency, left, right.
inline std::vector<std::array<double, 3>> CsvRows(const std::string& csv) {
    std::istringstream lines(csv);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(line, "frequency_hz,left_db,right_db");
    std::vector<std::array<double, 3>> rows;
    while (std::getline(lines, line)) {
        std::array<double, 3> row{};
        EXPECT_EQ(std::sscanf(line.c_str(), "%lf,%lf,%lf", &row[0], &row[1], &row[2]), 3) << line;
        rows.push_back(row);
    }
    return rows;
}

}  // namespace vorix::test
