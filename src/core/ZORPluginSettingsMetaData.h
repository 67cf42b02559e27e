#pragma once

#include <cstdint>
#include <string>

#include "core/ChannelConfig.h"
#include "serialization/Serializable.h"

namespace vorix {

class PluginCoreInterface;

// The archive type name of the record.
inline constexpr const char* kSettingsMetaDataTypeName = "PluginCore_SettingsMetaData";

// What the framework's own settings form records about the product and the instance that saved
// them: identity texts from the meta class and the channel configuration. A reader can tell from
// it whose settings it is reading before it reads the product's own part. Main thread, like the
// settings it travels with.
class ZORPluginSettingsMetaData : public Serialization::Serializable {
  public:
    // All texts empty and both numbers 0; the form that a reader fills. Main thread.
    ZORPluginSettingsMetaData() = default;
    // Filled from the process's meta class and `config`. Holds a meta class reference while it
    // runs only, so it may make the meta class and destroy it again. Main thread; throws
    // ZORPluginMetaClass::NoMetaClass when no meta class can be made.
    explicit ZORPluginSettingsMetaData(const ChannelConfig& config);
    // The same for the channel configuration of `core`. Main thread.
    explicit ZORPluginSettingsMetaData(const PluginCoreInterface& core);

    // Writes the fields in their order into the archive's open scope. Main thread; never on the
    // audio thread (the archive allocates and throws).
    void Serialize(Serialization::Archive& archive);
    // Reads every field from the archive's open scope; a missing or mistyped field throws, as
    // the record is then not one that this framework wrote. Main thread.
    void Deserialize(Serialization::Archive& archive);

    // The Serializable slots: the type name, and Serialize and Deserialize. Main thread.
    const char* GetTypeName() const override { return kSettingsMetaDataTypeName; }
    void Write(Serialization::Archive& archive) override { Serialize(archive); }
    void Read(Serialization::Archive& archive) override { Deserialize(archive); }

    // Whether every field is equal; the archive id does not count. Any thread.
    friend bool operator==(const ZORPluginSettingsMetaData& a, const ZORPluginSettingsMetaData& b);

    std::string signature;     // the product name
    std::string name;          // the product's file name
    std::string version;       // the product version
    std::string copyright;     // the maker's notice
    std::string manufacturer;  // the maker's short name
    std::int32_t inputs = 0;
    std::int32_t outputs = 0;
};

}  // namespace vorix
