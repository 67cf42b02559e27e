#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "lv2/Lv2FactoryPrograms.h"
#include "lv2/Lv2PortRecord.h"

namespace vorix {

class ZORPluginMetaClass;

// The Turtle documents of the bundle, made from the product's own tables so that they cannot
// drift from what the module does: the manifest, the two plug-ins with their ports, and the
// factory programs as presets of each. Build time; they allocate.

// The manifest: each plug-in with its binary, each preset with the file that describes it.
std::string Lv2ManifestTurtle(const std::string& binaryName,
                              const std::vector<Lv2FactoryProgram>& programs);

// Both plug-ins: identity, features, interfaces and every port in module order, the host
// parameters with the names, ranges, defaults and units of the parameter table.
std::string Lv2PluginsTurtle(const ZORPluginMetaClass& metaClass);

// What the engine of a plug-in with `channels` channels holds for its control ports after loading
// `program`.
using Lv2ProgramPortValues = std::function<std::vector<Lv2PortValue>(
    std::int32_t channels, const Lv2FactoryProgram& program)>;

// Every factory program as a preset of each plug-in: the values its control ports take, and a
// state whose settings value is the program's settings document and whose port values are the
// same values, loaded through the state interface like a saved state.
std::string Lv2PresetsTurtle(const std::vector<Lv2FactoryProgram>& programs,
                             const Lv2ProgramPortValues& portValues);

}  // namespace vorix
