#pragma once

#include <cstdint>
#include <string>

#include "core/ZORPluginMetaClass.h"
#include "framework/FourCC.h"
#include "hostlib/CEffectGroup.h"

namespace vorix {

class RTASPluginMetaClassInterface;

// The plug-in file as the host sees it: the maker, the product, and the effect types the product
// offers for each of its channel pairs. There is one group per loaded file; it holds a reference
// to the product's description for its whole life, so that the table survives between inserts.
// Main thread.
class ZORGroup : public CEffectGroup {
  public:
    // The maker's identity as the host lists it.
    static constexpr const char* kManufacturerNameSet = "Zorvane Sound Works\nZOR";
    static constexpr std::int32_t kManufacturerId = static_cast<std::int32_t>(FourCC("Zorv"));
    // The number the maker gives the product among its own, and the group's gestalt.
    static constexpr std::int32_t kProductNumber = 1;
    static constexpr std::int32_t kGroupGestalt = 14;

    // Main thread. Takes a reference on the product's description and sets the identity; throws
    // ZORPluginMetaClass::NoMetaClass when no description can be made.
    ZORGroup();
    ~ZORGroup() override;

    // Main thread, from Initialize: one effect type per supported kind of insert and channel
    // pair, in the order of the product's channel pairs.
    void CreateEffectTypes() override;

  private:
    const RTASPluginMetaClassInterface& HostDescription() const;
    // The steps of CreateEffectTypes: an offline type, a real-time type (answered, so that it
    // can be the model of a later one), and what every type carries.
    void AddOfflineType(std::int32_t id, const std::string& nameSet, std::int32_t format);
    CEffectType& AddRealTimeType(std::int32_t id, std::int32_t inputFormat,
                                 std::int32_t outputFormat, const char* pageTables,
                                 const CEffectType* model);
    void FinishType(CEffectType& type) const;

    MetaClassReference metaClass_;
    std::string productNameSet_;
};

}  // namespace vorix
