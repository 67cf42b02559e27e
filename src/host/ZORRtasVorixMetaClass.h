#pragma once

#include <cstdint>
#include <string>

#include "host/ZORVorixMetaClass.h"
#include "host/RTASPluginMetaClassBase.h"

namespace vorix {

// Vorix as Pro Tools sees it: plug-in id "Vorx", version 1, the name sets of the product and of
// its inserts, and the automation names of each parameter. Any thread but audio (allocates).
class ZORRtasVorixMetaClass : public RTASPluginMetaClassBase<ZORVorixMetaClass> {
  public:
    int32_t GetPlugInVersion() const override;
    int32_t GetPlugInId() const override;
    void GetProductNameSet(std::string& out) const override;
    void GetMonoNameSet(std::string& out) const override;
    void GetStereoNameSet(std::string& out) const override;

    // The names the host lists in its automation menus, longest first, one per line.
    void GetControlNameSet(std::string& out, int32_t id,
                           const ChannelConfig& config) const override;
};

}  // namespace vorix
