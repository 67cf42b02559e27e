// Writes the bundle's Turtle files from the product's own tables: the build runs it after every
// change of the parameter table or of the factory programs.
//
//   vorix_lv2_turtle BUNDLE_DIR BINARY_NAME

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include "core/ZORPluginMetaClass.h"
#include "host/ZORVorixMetaClass.h"
#include "lv2/Lv2BundleDescription.h"
#include "lv2/Lv2FactoryPrograms.h"
#include "lv2/Lv2Names.h"

namespace {

void WriteFile(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    if (!file) throw std::runtime_error("cannot write " + path.string());
}

int Generate(const std::filesystem::path& bundle, const std::string& binaryName) {
    const vorix::ZORVorixMetaClass metaClass;
    const std::vector<vorix::Lv2FactoryProgram> programs = vorix::ReadLv2FactoryPrograms(
        metaClass.GetFactoryPrograms(), metaClass.GetProductName(), metaClass.GetProgramCount());
    std::filesystem::create_directories(bundle);
    WriteFile(bundle / vorix::kLv2ManifestFile, vorix::Lv2ManifestTurtle(binaryName, programs));
    WriteFile(bundle / vorix::kLv2PluginsFile, vorix::Lv2PluginsTurtle(metaClass));
    WriteFile(bundle / vorix::kLv2PresetsFile, vorix::Lv2PresetsTurtle(programs));
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
