#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/ZORPluginMetaClass.h"

namespace vorix {

// Vorix's description: its identity, its channel pairs (2, 2) and (1, 1), its nineteen factory
// programs and its table of 33 parameters (ten filter controls of three parameters each, the two
// output trims and the session-change counter). It makes the engine, Ombrel; the host layer's
// final class derives from this one.
class ZORVorixMetaClass : public ZORPluginMetaClass {
  public:
    // Builds the parameter table. Main thread, once per process.
    ZORVorixMetaClass();

    // A new engine for an instance with the channels of `config`. Main thread; may throw.
    std::unique_ptr<PluginCore> CreateCore(PluginPlatform* platform,
                                           const ChannelConfig& config) override;
    // Identity texts. Any thread but audio (allocates).
    std::string GetProductName() const override;
    std::string GetProductFileName() const override;
    std::string GetVersion() const override;
    std::string GetCopyright() const override;
    std::string GetCompanyShortName() const override;
    // (2, 2), then (1, 1). Any thread but audio (allocates).
    void GetChannelConfigs(std::vector<ChannelConfig>& out) const override;
    // The embedded factory document. Any thread; never allocates or locks.
    const char* GetFactoryPrograms() const override;
    // 19. Any thread; never allocates or locks.
    int32_t GetProgramCount() const override;
    // At this level the names a host would list are the editor's plain names. Any thread but audio
    // (allocates).
    void GetControlNameSet(std::string& out, int32_t id,
                           const ChannelConfig& config) const override;
    // One meter per output channel. Any thread but audio (allocates).
    void GetMeterNames(const ChannelConfig& config, std::vector<ZORMeterInfo>& out) const override;

    // The plain name the editor shows for the parameter of `id`: "A: Frequency" and the like
    // for the filter controls, the trims by channel layout, "<EMPTY>" for a row without an
    // editor name and "INVALID ID" for an id outside the table. Any thread but audio (allocates).
    void GetParameterName(std::string& out, int32_t id, const ChannelConfig& config) const;
};

}  // namespace vorix
