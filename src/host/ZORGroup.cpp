#include "host/ZORGroup.h"

#include <memory>
#include <vector>

#include "framework/Exceptions.h"
#include "host/RTASPluginMetaClassInterface.h"
#include "host/ZORPTProcessAS.h"

namespace vorix {
namespace {

// The effect type ids, one per kind of insert and channel layout.
constexpr std::int32_t kMonoOfflineType = static_cast<std::int32_t>(FourCC("mnAS"));
constexpr std::int32_t kMonoRealTimeType = static_cast<std::int32_t>(FourCC("mnRT"));
constexpr std::int32_t kMonoToStereoRealTimeType = static_cast<std::int32_t>(FourCC("msRT"));
constexpr std::int32_t kStereoOfflineType = static_cast<std::int32_t>(FourCC("StAS"));
constexpr std::int32_t kStereoRealTimeType = static_cast<std::int32_t>(FourCC("StRT"));

// The channel formats of a type's input and output.
constexpr std::int32_t kMono = CDSPProcessType::kChannelFormatMono;
constexpr std::int32_t kStereo = CDSPProcessType::kChannelFormatStereo;

// The processor class of every real-time type.
constexpr std::int32_t kRealTimeDspClass = static_cast<std::int32_t>(FourCC("rt71"));

// Type gestalts: an offline type with a preview, a type that keeps a chunk, every type of this
// product, and a type with a side chain.
constexpr std::int32_t kPreviewGestalt = 27;
constexpr std::int32_t kChunkInterfaceGestalt = 30;
constexpr std::int32_t kEffectGestalt = 8;
constexpr std::int32_t kSideChainGestalt = 5;
// The category the host files the product's types under.
constexpr std::int32_t kCategory = 6;

// The control-surface page tables in the product's resources: the mono tables serve the mono
// and the mono-to-stereo types.
constexpr const char* kMonoPageTables = "MonoPageTables";
constexpr const char* kStereoPageTables = "StereoPageTables";

CEffectProcess* CreateProcess() {
    return new ZORPTProcessAS;
}

}  // namespace

ZORGroup::ZORGroup() {
    HostDescription().GetProductNameSet(productNameSet_);
    SetManufacturerNameSet(kManufacturerNameSet);
    SetManufacturerID(kManufacturerId);
    SetProductNameSet(productNameSet_, kProductNumber);
    AddGestalt(kGroupGestalt);
}

ZORGroup::~ZORGroup() = default;

const RTASPluginMetaClassInterface& ZORGroup::HostDescription() const {
    const auto* description = dynamic_cast<const RTASPluginMetaClassInterface*>(metaClass_.get());
    if (description == nullptr) VORIX_THROW(ZORPluginMetaClass::NoMetaClass);
    return *description;
}

void ZORGroup::CreateEffectTypes() {
    const RTASPluginMetaClassInterface& host = HostDescription();
    const bool offline = host.SupportsAudioSuiteTypes();
    const bool realTime = host.SupportsRtasTypes();
    std::vector<ChannelConfig> pairs;
    (*metaClass_).GetChannelConfigs(pairs);
    // A real-time type made after the mono one takes its settings, so that the kinds differ only
    // in their id, layout and page tables.
    const CEffectType* mono = nullptr;
    std::string names;
    for (const ChannelConfig& pair : pairs) {
        if (pair == ChannelConfig{1, 1}) {
            host.GetMonoNameSet(names);
            if (offline) AddOfflineType(kMonoOfflineType, names, kMono);
            if (realTime) {
                mono = &AddRealTimeType(kMonoRealTimeType, kMono, kMono, kMonoPageTables, mono);
            }
        } else if (pair == ChannelConfig{1, 2}) {
            if (realTime) {
                AddRealTimeType(kMonoToStereoRealTimeType, kMono, kStereo, kMonoPageTables, mono);
            }
        } else if (pair == ChannelConfig{2, 2}) {
            host.GetStereoNameSet(names);
            if (offline) AddOfflineType(kStereoOfflineType, names, kStereo);
            if (realTime) {
                AddRealTimeType(kStereoRealTimeType, kStereo, kStereo, kStereoPageTables, mono);
            }
        }
    }
}

void ZORGroup::AddOfflineType(std::int32_t id, const std::string& nameSet, std::int32_t format) {
    auto type = std::make_unique<CEffectTypeAS>();
    type->SetTypeID(id);
    type->SetNameSet(nameSet);
    type->SetChannelConfiguration(format, format);
    if (HostDescription().SupportsAudioSuitePreview()) type->AddGestalt(kPreviewGestalt);
    FinishType(*type);
    AddEffectType(std::move(type));
}

CEffectType& ZORGroup::AddRealTimeType(std::int32_t id, std::int32_t inputFormat,
                                       std::int32_t outputFormat, const char* pageTables,
                                       const CEffectType* model) {
    auto type = std::make_unique<CEffectTypeRTAS>();
    if (model != nullptr) {
        type->CopySettingsFrom(*model);
    } else {
        type->SetNameSet(productNameSet_);
        if (!HostDescription().HasNoChunkInterface()) type->AddGestalt(kChunkInterfaceGestalt);
    }
    type->SetTypeID(id);
    type->SetChannelConfiguration(inputFormat, outputFormat);
    type->SetDSPClass(kRealTimeDspClass);
    FinishType(*type);
    type->SetPageTableName(pageTables);
    return AddEffectType(std::move(type));
}

void ZORGroup::FinishType(CEffectType& type) const {
    const RTASPluginMetaClassInterface& host = HostDescription();
    type.SetPlugInID(host.GetPlugInId());
    type.SetPlugInVersion(host.GetPlugInVersion());
    type.AddGestalt(kEffectGestalt);
    if (host.HasSideChain()) type.AddGestalt(kSideChainGestalt);
    type.SetProcessFactory(&CreateProcess);
    type.SetCategory(kCategory);
}

}  // namespace vorix
