#include "host/ZORVorixMetaClass.h"

#include <array>

#include "engine/FactoryPrograms.h"
#include "engine/Ombrel.h"
#include "engine/VorixParameterIds.h"

namespace vorix {

namespace {

constexpr const char* kProductName = "Vorix";
constexpr const char* kProductFileName = "Vorix";
constexpr const char* kVersion = "2.1";
// 25 characters; it carries the maker's full name, which every settings text must hold to be
// accepted back from a host chunk.
constexpr const char* kCopyright = "Zorvane Sound Works, 2026";
constexpr const char* kCompanyShortName = "Zorvane Sound";
constexpr int32_t kProgramCount = 19;

// One row shape of the table: what a parameter of a role, or a single parameter, looks like.
struct ParameterShape {
    int32_t type;
    const char* units;
    float min;
    float max;
    float defaultValue;
    float step;
    bool automatable;
};

constexpr std::array<ParameterShape, kIdsPerFilterControl> kFilterControlShapes = {{
    {kParamFrequency, "Hz", 16.0f, 20000.0f, 1000.0f, 1.0f, true},
    {kParamBoostCutDb, "dB", -18.0f, 18.0f, 0.0f, 0.05f, true},
    {kParamContinuous, "", 0.0f, 1.0f, 0.5f, 0.001f, true},
}};
constexpr ParameterShape kOutputTrimShape = {
    kParamBoostCutDb, "dB", -24.0f, 24.0f, 0.0f, 0.5f, true};
constexpr ParameterShape kDirtyShape = {kParamInteger, "", 0.0f, 1000000.0f, 0.0f, 1.0f, false};

// The internal names of the filter controls' parameters, by id.
// clang-format off
constexpr std::array<const char*, kFilterControlIdCount> kControlNames = {
    "prmControl_0_Freq", "prmControl_0_Gain", "prmControl_0_Poly",
    "prmControl_1_Freq", "prmControl_1_Gain", "prmControl_1_Poly",
    "prmControl_2_Freq", "prmControl_2_Gain", "prmControl_2_Poly",
    "prmControl_3_Freq", "prmControl_3_Gain", "prmControl_3_Poly",
    "prmControl_4_Freq", "prmControl_4_Gain", "prmControl_4_Poly",
    "prmControl_5_Freq", "prmControl_5_Gain", "prmControl_5_Poly",
    "prmControl_6_Freq", "prmControl_6_Gain", "prmControl_6_Poly",
    "prmControl_7_Freq", "prmControl_7_Gain", "prmControl_7_Poly",
    "prmControl_8_Freq", "prmControl_8_Gain", "prmControl_8_Poly",
    "prmControl_9_Freq", "prmControl_9_Gain", "prmControl_9_Poly",
};
// clang-format on

ZORParameterInfo MakeInfo(int32_t id, const char* name, const ParameterShape& shape) {
    ZORParameterInfo info;
    info.id = id;
    info.name = name;
    info.type = shape.type;
    info.units = shape.units;
    info.min = shape.min;
    info.max = shape.max;
    info.defaultValue = shape.defaultValue;
    info.step = shape.step;
    info.automatable = shape.automatable;
    return info;
}

// The editor's names: the words for the three parameters of a filter control, the trims by
// channel layout, a row the editor does not name, and an id outside the table.
constexpr const char* kLeftGainStereoName = "Left Gain";
constexpr const char* kLeftGainMonoName = "Output Gain";
constexpr const char* kRightGainStereoName = "Right Gain";
constexpr const char* kRightGainMonoName = "n/a";
constexpr const char* kUnnamedParameter = "<EMPTY>";
constexpr const char* kUnknownParameter = "INVALID ID";
constexpr std::array<const char*, kIdsPerFilterControl> kRoleWords = {"Frequency", "Gain",
                                                                      "Q/BW/Slope"};

// Where the host places the meters among its own, and their kind: the same for all of them.
constexpr int32_t kMeterPosition = 1;
constexpr int32_t kMeterKind = 0;

bool IsStereo(const ChannelConfig& config) {
    return config.outputs > 1;
}

}  // namespace

ZORVorixMetaClass::ZORVorixMetaClass() {
    for (int32_t id = 0; id < kFilterControlIdCount; ++id) {
        const ParameterShape& shape =
            kFilterControlShapes[static_cast<size_t>(id % kIdsPerFilterControl)];
        AddParameter(MakeInfo(id, kControlNames[static_cast<size_t>(id)], shape));
    }
    AddParameter(MakeInfo(kLeftGainId, "prmLeftGain", kOutputTrimShape));
    AddParameter(MakeInfo(kRightGainId, "prmRightGain", kOutputTrimShape));
    AddParameter(MakeInfo(kDirtyId, "prmDirty", kDirtyShape));
}

std::unique_ptr<PluginCore> ZORVorixMetaClass::CreateCore(PluginPlatform* platform,
                                                         const ChannelConfig& config) {
    return std::make_unique<Ombrel>(platform, config);
}

std::string ZORVorixMetaClass::GetProductName() const {
    return kProductName;
}
std::string ZORVorixMetaClass::GetProductFileName() const {
    return kProductFileName;
}
std::string ZORVorixMetaClass::GetVersion() const {
    return kVersion;
}
std::string ZORVorixMetaClass::GetCopyright() const {
    return kCopyright;
}
std::string ZORVorixMetaClass::GetCompanyShortName() const {
    return kCompanyShortName;
}

void ZORVorixMetaClass::GetChannelConfigs(std::vector<ChannelConfig>& out) const {
    out = {ChannelConfig{2, 2}, ChannelConfig{1, 1}};
}

const char* ZORVorixMetaClass::GetFactoryPrograms() const {
    return FactoryProgramsDocument();
}

int32_t ZORVorixMetaClass::GetProgramCount() const {
    return kProgramCount;
}

void ZORVorixMetaClass::GetControlNameSet(std::string& out, int32_t id,
                                          const ChannelConfig& config) const {
    GetParameterName(out, id, config);
}

void ZORVorixMetaClass::GetMeterNames(const ChannelConfig& config,
                                      std::vector<ZORMeterInfo>& out) const {
    out.clear();
    if (IsStereo(config)) {
        out.push_back({"L Out", kFirstOutputMeterId, kMeterPosition, kMeterKind});
        out.push_back({"R Out", kSecondOutputMeterId, kMeterPosition, kMeterKind});
    } else if (config.outputs == 1) {
        out.push_back({"Out", kFirstOutputMeterId, kMeterPosition, kMeterKind});
    }
}

void ZORVorixMetaClass::GetParameterName(std::string& out, int32_t id,
                                         const ChannelConfig& config) const {
    if (FindParameterInfo(id) == nullptr) {
        out = kUnknownParameter;
    } else if (id >= 0 && id < kFilterControlIdCount) {
        out = std::string(1, static_cast<char>('A' + id / kIdsPerFilterControl)) + ": " +
              kRoleWords[static_cast<size_t>(id % kIdsPerFilterControl)];
    } else if (id == kLeftGainId) {
        out = IsStereo(config) ? kLeftGainStereoName : kLeftGainMonoName;
    } else if (id == kRightGainId) {
        out = IsStereo(config) ? kRightGainStereoName : kRightGainMonoName;
    } else {
        out = kUnnamedParameter;
    }
}

}  // namespace vorix
