// Writes the bundle's Turtle files from the product's own tables: the build runs it after every
// change of the parameter table or of the factory programs.
//
//   vorix_lv2_turtle BUNDLE_DIR BINARY_NAME

#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include "core/PluginCore.h"
#include "core/ZORPluginMetaClass.h"
#include "host/ZORVorixMetaClass.h"
#include "lv2/Lv2BundleDescription.h"
#include "lv2/Lv2FactoryPrograms.h"
#include "lv2/Lv2Names.h"
#include "lv2/Lv2PortRecord.h"

namespace {

// The rate at which the presets' frequencies are read back from the engine, which keeps them
// as fractions of the rate.
constexpr float kPresetRate = 48000.0f;
constexpr std::int32_t kPresetBlock = 512;

// A frequency as the document gives it: read back through a fraction of the rate, it comes out a
// bit or two away from the document's number ("100.00001" at 48 kHz, "100" at 44.1 kHz), and six
// significant digits take that away at every rate.
float DocumentFrequency(float hz) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.6g", static_cast<double>(hz));
    return std::strtof(text.data(), nullptr);
}

// What a fresh instance with `channels` channels holds for its control ports once the program's
// settings are loaded as a preset loads them.
std::vector<vorix::Lv2PortValue> ProgramPortValues(std::int32_t channels,
                                                   const vorix::Lv2FactoryProgram& program) {
    const vorix::MetaClassReference metaClass;
    const std::unique_ptr<vorix::PluginCore> core(
        metaClass.get()->CreateCore(nullptr, vorix::ChannelConfig{channels, channels}));
    core->CaptureDefaultSettings();
    core->SetSampleRate(kPresetRate);
    core->SetBlockSize(kPresetBlock);
    core->Start();
    core->SetChunk(program.settings.data(), static_cast<std::int32_t>(program.settings.size()),
                   true);
    std::vector<vorix::Lv2PortValue> values = vorix::Lv2EnginePortValues(*core, *metaClass.get());
    for (vorix::Lv2PortValue& entry : values) {
        for (std::int32_t index = 0; index < metaClass.get()->GetParameterCount(); ++index) {
            const vorix::ZORParameterInfo& info = *metaClass.get()->GetParameterInfo(index);
            if (entry.symbol == info.name && info.type == vorix::kParamFrequency) {
                entry.value = DocumentFrequency(entry.value);
            }
        }
    }
    return values;
}

void WriteFile(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    if (!file) throw std::runtime_error("cannot write " + path.string());
}

int Generate(const std::filesystem::path& bundle, const std::string& binaryName) {
    vorix::SetMetaClassMaker([] { return std::make_unique<vorix::ZORVorixMetaClass>(); });
    const vorix::ZORVorixMetaClass metaClass;
    const std::vector<vorix::Lv2FactoryProgram> programs = vorix::ReadLv2FactoryPrograms(
        metaClass.GetFactoryPrograms(), metaClass.GetProductName(), metaClass.GetProgramCount());
    std::filesystem::create_directories(bundle);
    WriteFile(bundle / vorix::kLv2ManifestFile, vorix::Lv2ManifestTurtle(binaryName, programs));
    WriteFile(bundle / vorix::kLv2PluginsFile, vorix::Lv2PluginsTurtle(metaClass));
    WriteFile(bundle / vorix::kLv2PresetsFile,
              vorix::Lv2PresetsTurtle(programs, ProgramPortValues));
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: vorix_lv2_turtle BUNDLE_DIR BINARY_NAME\n";
        return 2;
    }
    try {
        return Generate(argv[1], argv[2]);
    } catch (const std::exception& e) {
        std::cerr << "vorix_lv2_turtle: " << e.what() << "\n";
        return 1;
    }
}
