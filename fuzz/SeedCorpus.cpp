// Writes the seed corpus of every reader's fuzz target from the product's own documents: the
// factory programs, documents the engine writes for them, chunks the core makes, control-state
// payloads and control texts. Usage: vorix_fuzz_seeds DIR (one folder per target below DIR).

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <vector>

#include "FuzzSupport.h"
#include "core/PluginCore.h"
#include "engine/FactoryPrograms.h"
#include "framework/FourCC.h"
#include "hostlib/ChunkDataParser.h"
#include "vorix-host/Insert.h"
#include "vorix-host/PlugInModule.h"

using namespace vorix;
namespace fs = std::filesystem;

namespace {

void Write(const fs::path& folder, const std::string& name, std::string_view bytes) {
    fs::create_directories(folder);
    std::ofstream(folder / name, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::vector<std::string> FactoryDocuments() {
    const std::string all = FactoryProgramsDocument();
    std::vector<std::string> documents;
    for (size_t start = all.find("<program "); start != std::string::npos;
         start = all.find("<program ", start + 1)) {
        const size_t body = all.find('\n', start) + 1;
        documents.push_back(all.substr(body, all.find("</program>", body) - body));
    }
    return documents;
}

void SettingsSeeds(const fs::path& out) {
    fuzz::QuietPlatform platform;
    int n = 0;
    for (const ChannelConfig config : {ChannelConfig{2, 2}, ChannelConfig{1, 1}}) {
        auto core = GetMetaClass()->CreateCore(&platform, config);
        core->SetSampleRate(config.outputs == 2 ? 48000.0f : 32000.0f);
        for (const std::string& document : FactoryDocuments()) {
            Write(out / "settings", "factory" + std::to_string(n) + ".vrx", document);
            core->LoadSettings(document);
            std::string written;
            core->CaptureSettings(written);
            Write(out / "settings", "written" + std::to_string(n++) + ".vrx", written);
        }
    }
}

void ChunkSeeds(const fs::path& out) {
    Write(out / "core-chunk", "programs", std::string(1, '\0') + FactoryProgramsDocument());
    int n = 0;
    for (const std::string& document : FactoryDocuments())
        Write(out / "core-chunk", "preset" + std::to_string(n++), std::string(1, '\1') + document);
}

void ParserSeeds(const fs::path& out) {
    ChunkDataParser parser;
    parser.AddLong("bypa", 0);
    parser.AddDouble("ctaa", 1234.5);
    parser.AddFloat("ctab", -3.0f);
    parser.AddShort("ctac", 7);
    std::vector<std::uint8_t> payload(parser.GetChunkDataSize());
    parser.WriteChunkData(payload);
    Write(out / "chunk-parser", "controls",
          std::string_view(reinterpret_cast<const char*>(payload.data()), payload.size()));
}

void ArchiveSeeds(const fs::path& out) {
    fuzz::QuietPlatform platform;
    fuzz::ArchiveCore core(&platform);
    core.SetAttribute("zoom", "1");
    core.SetAttribute("sort", "0");
    std::string written;
    core.CaptureSettings(written);
    Write(out / "xml-archive", "settings", written);
}

// A canonical WAV file: RIFF header, "fmt " chunk, "data" chunk, little-endian samples.
std::string Wav(int channels, int bits, int frames) {
    std::string bytes;
    const auto put = [&bytes](std::uint32_t value, int size) {
        for (int i = 0; i < size; ++i) bytes.push_back(static_cast<char>((value >> (8 * i)) & 0xFF));
    };
    const int frameBytes = channels * bits / 8;
    const int dataBytes = frames * frameBytes;
    bytes += "RIFF";
    put(static_cast<std::uint32_t>(36 + dataBytes), 4);
    bytes += "WAVEfmt ";
    put(16, 4);
    put(bits == 32 ? 3 : 1, 2);  // float or integer samples
    put(static_cast<std::uint32_t>(channels), 2);
    put(48000, 4);
    put(static_cast<std::uint32_t>(48000 * frameBytes), 4);
    put(static_cast<std::uint32_t>(frameBytes), 2);
    put(static_cast<std::uint32_t>(bits), 2);
    bytes += "data";
    put(static_cast<std::uint32_t>(dataBytes), 4);
    for (int i = 0; i < frames * channels; ++i) {
        const double sample = 0.5 * ((i * 37) % 200 - 100) / 100.0;
        if (bits == 32) {
            const float value = static_cast<float>(sample);
            std::uint32_t word = 0;
            std::memcpy(&word, &value, 4);
            put(word, 4);
        } else {
            put(static_cast<std::uint32_t>(static_cast<std::int32_t>(sample * 32767.0)), 2);
        }
    }
    return bytes;
}

void AudioSeeds(const fs::path& out) {
    Write(out / "audio-file", "mono16.wav", Wav(1, 16, 300));
    Write(out / "audio-file", "stereo16.wav", Wav(2, 16, 200));
    Write(out / "audio-file", "stereo-float.wav", Wav(2, 32, 100));
}

// The chunks of an insert as the reference host saves them, fresh and after each program.
void ProcessChunkSeeds(const fs::path& out) {
    PlugInModule module(VORIX_MODULE_PATH);
    module.Open();
    Insert insert(module.FindType(static_cast<std::int32_t>(FourCC("StRT"))), InsertSetup{});
    int n = 0;
    for (const std::string& document : FactoryDocuments()) {
        for (const SavedChunk& chunk : insert.SaveChunks()) {
            const char selector = chunk.id == static_cast<std::int32_t>(FourCC("elck")) ? 1 : 0;
            std::string bytes(1, selector);
            bytes.append(chunk.bytes.begin(), chunk.bytes.end());
            Write(out / "process-chunks", "chunk" + std::to_string(n++), bytes);
        }
        SavedChunk program{static_cast<std::int32_t>(FourCC("zorc")), {}};
        program.bytes.assign(56, 0);
        program.bytes.insert(program.bytes.end(), document.begin(), document.end());
        const auto size = static_cast<std::uint32_t>(program.bytes.size());
        for (int i = 0; i < 4; ++i) program.bytes[static_cast<size_t>(i)] = static_cast<std::uint8_t>(size >> (24 - 8 * i));
        insert.LoadChunk(program);
    }
}

void TextSeeds(const fs::path& out) {
    int n = 0;
    for (const char* text : {"1000", "12.5k", "-3 dB", "4:1", "1/2", "0.5 s", "1", "2.5E3", "-inf"})
        Write(out / "control-text", "text" + std::to_string(n++), text);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: vorix_fuzz_seeds DIR\n";
        return 1;
    }
    fuzz::HoldMetaClass();
    const fs::path out = argv[1];
    SettingsSeeds(out);
    ChunkSeeds(out);
    ParserSeeds(out);
    ArchiveSeeds(out);
    TextSeeds(out);
    AudioSeeds(out);
    ProcessChunkSeeds(out);
    return 0;
}
