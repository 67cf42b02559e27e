#pragma once

#include <cstdint>
#include <string>

#include "framework/FourCC.h"
#include "host/RTASPluginMetaClassInterface.h"

namespace vorix {

// The session chunk every product of this framework keeps in Pro Tools sessions.
constexpr int32_t kPluginChunkId = static_cast<int32_t>(FourCC("zorc"));
constexpr const char* kPluginChunkName = "ZOR Plug-In Chunk";

// Joins a product's description `T` to the Pro Tools interface, with the answers every product
// of this framework shares: real-time inserts only, no side chain, one session chunk, and no
// per-program settings bank (the engine alone holds the current settings). The product's final
// class gives its plug-in id, version and name sets. Any thread but audio, as its bases.
template <class T>
class RTASPluginMetaClassBase : public T, public RTASPluginMetaClassInterface {
  public:
    bool HasProgramBank() const override { return false; }

    bool GetChunkInfo(int32_t& id, std::string& name) const override {
        if (this->HasNoChunk()) return false;
        id = kPluginChunkId;
        name = kPluginChunkName;
        return true;
    }
    bool GetCustomEffectType(const ChannelConfig& /*config*/, int32_t& /*typeId*/,
                             std::string& /*nameSet*/, std::string& /*pageTables*/) const override {
        return false;
    }
    bool SupportsAudioSuiteTypes() const override { return false; }
    // A preview is part of an AudioSuite insert and exists only with one.
    bool SupportsAudioSuitePreview() const override { return SupportsAudioSuiteTypes(); }
    bool SupportsRtasTypes() const override { return true; }
    bool HasNoChunkInterface() const override { return this->HasNoChunk(); }
    bool HasSideChain() const override { return false; }
};

}  // namespace vorix
