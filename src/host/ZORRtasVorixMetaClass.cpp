#include "host/ZORRtasVorixMetaClass.h"

#include <array>
#include <string_view>

#include "engine/VorixParameterIds.h"
#include "framework/FourCC.h"

namespace vorix {

namespace {

constexpr int32_t kPlugInVersion = 1;
constexpr int32_t kPlugInId = static_cast<int32_t>(FourCC("Vorx"));

constexpr const char* kProductNameSet = "Vorix\nVrx";
constexpr const char* kMonoNameSet = "Vorix 1ch\nVorix 1\nVrx1\nVrx";
constexpr const char* kStereoNameSet = "Vorix 2ch\nVorix 2\nVrx2\nVrx";

// The trims' sets end in a tab, and the right trim of a mono insert is one blank: the host takes
// a set exactly as given, and these are the forms it has always been given.
constexpr const char* kLeftTrimStereoNames = "L Output Trim\nL Out Trim\nL Out\nL\t";
constexpr const char* kLeftTrimMonoNames = "Output Trim\nOut Trim\nOut\n\t";
constexpr const char* kRightTrimStereoNames = "R Output Trim\nR Out Trim\nR Out\nR\t";
constexpr const char* kRightTrimMonoNames = " ";
constexpr const char* kNoControlNames = "<n/a>";

// The names of a filter control's parameters, each behind the control's letter.
constexpr std::array<std::string_view, 6> kFrequencyForms = {": Frequency", ": Freq", ":Freq",
                                                             ": Fc",        ": F",    ":F"};
constexpr std::array<std::string_view, 4> kGainForms = {": Gain", ":Gain", ": G", ":G"};
constexpr std::array<std::string_view, 8> kShapeForms = {
    ": Q/BW/Slope", ":Q/BW/Slope", ": Shape", ":Shape", ": Shp", ":Shp", ": S", ":S"};

template <size_t N>
std::string LetteredNameSet(char letter, const std::array<std::string_view, N>& forms) {
    std::string set;
    for (std::string_view form : forms) {
        if (!set.empty()) set += '\n';
        set += letter;
        set += form;
    }
    return set;
}

std::string FilterControlNameSet(int32_t id) {
    const char letter = static_cast<char>('A' + id / kIdsPerFilterControl);
    switch (static_cast<FilterControlRole>(id % kIdsPerFilterControl)) {
        case FilterControlRole::Frequency:
            return LetteredNameSet(letter, kFrequencyForms);
        case FilterControlRole::Gain:
            return LetteredNameSet(letter, kGainForms);
        case FilterControlRole::Shape:
            break;
    }
    return LetteredNameSet(letter, kShapeForms);
}

}  // namespace

int32_t ZORRtasVorixMetaClass::GetPlugInVersion() const {
    return kPlugInVersion;
}
int32_t ZORRtasVorixMetaClass::GetPlugInId() const {
    return kPlugInId;
}
void ZORRtasVorixMetaClass::GetProductNameSet(std::string& out) const {
    out = kProductNameSet;
}
void ZORRtasVorixMetaClass::GetMonoNameSet(std::string& out) const {
    out = kMonoNameSet;
}
void ZORRtasVorixMetaClass::GetStereoNameSet(std::string& out) const {
    out = kStereoNameSet;
}

void ZORRtasVorixMetaClass::GetControlNameSet(std::string& out, int32_t id,
                                              const ChannelConfig& config) const {
    const bool stereo = config.outputs > 1;
    if (id >= 0 && id < kFilterControlIdCount) {
        out = FilterControlNameSet(id);
    } else if (id == kLeftGainId) {
        out = stereo ? kLeftTrimStereoNames : kLeftTrimMonoNames;
    } else if (id == kRightGainId) {
        out = stereo ? kRightTrimStereoNames : kRightTrimMonoNames;
    } else {
        out = kNoControlNames;
    }
}

}  // namespace vorix
