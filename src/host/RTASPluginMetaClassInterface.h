#pragma once

#include <cstdint>
#include <string>

#include "core/ChannelConfig.h"

namespace vorix {

// What the Pro Tools layer needs of a product beyond its plain description: its plug-in id and
// version, its session chunk, the name sets the host lists, and which kinds of insert it offers.
// The host layer finds it by a dynamic cast from the meta class. Any thread but audio (the name
// sets allocate); no answer changes after construction.
class RTASPluginMetaClassInterface {
  public:
    RTASPluginMetaClassInterface() = default;
    RTASPluginMetaClassInterface(const RTASPluginMetaClassInterface&) = delete;
    RTASPluginMetaClassInterface& operator=(const RTASPluginMetaClassInterface&) = delete;

    // The operations, in the order of their slots.
    virtual int32_t GetPlugInVersion() const = 0;
    virtual int32_t GetPlugInId() const = 0;
    // The id and name of the session chunk; false when the product keeps none.
    virtual bool GetChunkInfo(int32_t& id, std::string& name) const = 0;
    // Names of falling length, one per line, for the product, its mono and its stereo insert.
    virtual void GetProductNameSet(std::string& out) const = 0;
    virtual void GetMonoNameSet(std::string& out) const = 0;
    virtual void GetStereoNameSet(std::string& out) const = 0;
    // An effect type of the product's own for a channel pair, beyond the standard ones: its id
    // name set and page table resource. False when there is none.
    virtual bool GetCustomEffectType(const ChannelConfig& config, int32_t& typeId,
                                     std::string& nameSet, std::string& pageTables) const = 0;
    virtual bool SupportsAudioSuiteTypes() const = 0;
    virtual bool SupportsAudioSuitePreview() const = 0;
    virtual bool SupportsRtasTypes() const = 0;
    virtual bool HasNoChunkInterface() const = 0;
    virtual bool HasSideChain() const = 0;
    virtual ~RTASPluginMetaClassInterface() = default;
};

}  // namespace vorix
