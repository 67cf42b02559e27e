#include "core/ZORPluginSettingsMetaData.h"

#include "core/PluginCoreInterface.h"
#include "core/ZORPluginMetaClass.h"
#include "serialization/Archive.h"

namespace vorix {
namespace {

constexpr const char* kSignatureKey = "signature";
constexpr const char* kNameKey = "name";
constexpr const char* kVersionKey = "version";
constexpr const char* kCopyrightKey = "copyright";
constexpr const char* kManufacturerKey = "manufacturer";
constexpr const char* kInputsKey = "IOConfig.inputs";
constexpr const char* kOutputsKey = "IOConfig.outputs";

}  // namespace

ZORPluginSettingsMetaData::ZORPluginSettingsMetaData(const ChannelConfig& config)
    : inputs(config.inputs), outputs(config.outputs) {
    const MetaClassReference reference;
    const ZORPluginMetaClass& metaClass = *reference;
    signature = metaClass.GetProductName();
    name = metaClass.GetProductFileName();
    version = metaClass.GetVersion();
    copyright = metaClass.GetCopyright();
    manufacturer = metaClass.GetCompanyShortName();
}

ZORPluginSettingsMetaData::ZORPluginSettingsMetaData(const PluginCoreInterface& core)
    : ZORPluginSettingsMetaData(*core.GetChannelConfig()) {}

void ZORPluginSettingsMetaData::Serialize(Serialization::Archive& archive) {
    archive.WriteString(kSignatureKey, signature);
    archive.WriteString(kNameKey, name);
    archive.WriteString(kVersionKey, version);
    archive.WriteString(kCopyrightKey, copyright);
    archive.WriteString(kManufacturerKey, manufacturer);
    archive.WriteInt(kInputsKey, inputs);
    archive.WriteInt(kOutputsKey, outputs);
}

void ZORPluginSettingsMetaData::Deserialize(Serialization::Archive& archive) {
    // Read aside, so that a record that fails half-way leaves this one as it was.
    ZORPluginSettingsMetaData read;
    read.signature = archive.ReadString(kSignatureKey);
    read.name = archive.ReadString(kNameKey);
    read.version = archive.ReadString(kVersionKey);
    read.copyright = archive.ReadString(kCopyrightKey);
    read.manufacturer = archive.ReadString(kManufacturerKey);
    read.inputs = archive.ReadInt(kInputsKey);
    read.outputs = archive.ReadInt(kOutputsKey);
    *this = read;
}

bool operator==(const ZORPluginSettingsMetaData& a, const ZORPluginSettingsMetaData& b) {
    return a.signature == b.signature && a.name == b.name && a.version == b.version &&
           a.copyright == b.copyright && a.manufacturer == b.manufacturer && a.inputs == b.inputs &&
           a.outputs == b.outputs;
}

}  // namespace vorix
