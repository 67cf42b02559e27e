#include "core/ZORPluginMetaClass.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "core/ProgramDocumentReader.h"
#include "core/SettingsLines.h"
#include "core/SettingsTexts.h"

namespace vorix {

namespace {

constexpr const char* kPreferencesPrefix = "ZOR ";
constexpr const char* kPreferencesEnding = " Prefs";

// The units of a type that names none of its own, by type value.
constexpr std::array<const char*, 13> kDefaultUnits = {"", "",    "", "", "dB", "dB", "Hz",
                                                       "", "oct", "", "", "",   ""};

// A parameter's own units of "*" say that it has none, whatever its type's default.
constexpr const char* kNoUnits = "*";

constexpr const char* kOffLabel = "Off;0";
constexpr const char* kOnLabel = "On;1";

bool IsDiscreteType(int32_t type) {
    return type == kParamDiscrete || type == kParamOnOff || type == kParamInteger;
}

// Fixed-point text as the C library writes it. A negative value that rounds to zero keeps its
// sign ("-0.0"), as it does in the texts of the host's own controls, so both read alike.
std::string FixedText(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

// "label;value" into the map; an entry without a numeric value after the ";" is left out.
void ParseLabel(const std::string& entry, std::map<int32_t, std::string>& labels) {
    const auto separator = entry.find(';');
    if (separator == std::string::npos) return;
    const char* valueText = entry.c_str() + separator + 1;
    char* end = nullptr;
    const long value = std::strtol(valueText, &end, 10);
    if (end == valueText) return;
    labels.insert_or_assign(static_cast<int32_t>(value), entry.substr(0, separator));
}

// The label set of a value: the entry chosen by the value's distance from the minimum, clamped
// into the list as every parameter value is.
const std::vector<std::string>& LabelFormsFor(const ZORParameterInfo& info, float value) {
    const double last = static_cast<double>(info.labelSets.size() - 1);
    double position = std::trunc(static_cast<double>(value) - static_cast<double>(info.min));
    if (!(position >= 0.0)) position = 0.0;  // NaN included
    position = std::min(position, last);
    return info.labelSets[static_cast<size_t>(position)];
}

// The longest form that fits in `maxChars`, searched from the widest allowed down to two
// characters; if none fits, the longest form, which the caller then cuts.
std::string ChooseLabelForm(const std::vector<std::string>& forms, int32_t maxChars) {
    const int32_t count = static_cast<int32_t>(forms.size());
    for (int32_t k = std::min(maxChars, count - 1); k > 1; --k) {
        if (!forms[static_cast<size_t>(k)].empty()) return forms[static_cast<size_t>(k)];
    }
    return forms.back();
}

std::string DiscreteText(const ZORParameterInfo& info, float value, int32_t maxChars) {
    if (!info.labelSets.empty()) {
        const std::vector<std::string>& forms = LabelFormsFor(info, value);
        if (!forms.empty()) return ChooseLabelForm(forms, maxChars);
    }
    if (std::isfinite(value) && value == std::trunc(value) && std::fabs(value) < 2147483648.0f) {
        const auto label = info.labelsByValue.find(static_cast<int32_t>(value));
        if (label != info.labelsByValue.end()) return label->second;
    }
    return FormatNumber(value, 1, false);
}

}  // namespace

std::string FormatNumber(float value, int decimals, bool kilo) {
    const bool inKilo = kilo && value > 1000.0f;
    if (decimals > 0 && !inKilo) return FixedText(value, decimals);
    if (decimals <= 0 && !kilo) return FixedText(value, 0);
    const double thousands = static_cast<double>(value) * 0.001;
    if (thousands > 1.0) return FixedText(std::floor(thousands + 0.5), 0) + "k";
    return FixedText(value, 0);
}

ZORPluginMetaClass::ZORPluginMetaClass() = default;
ZORPluginMetaClass::~ZORPluginMetaClass() = default;

std::string ZORPluginMetaClass::GetCompanyShortName() const {
    return kMakerName;
}

const char* ZORPluginMetaClass::GetFactoryPrograms() const {
    return nullptr;
}

void ZORPluginMetaClass::GetFactoryProgramNames(std::vector<std::string>& out) const {
    const char* document = GetFactoryPrograms();
    if (document == nullptr) return;
    ProgramDocumentReader reader(document);
    if (!reader.FindHeader(GetProductName())) return;
    std::vector<std::string> names;
    std::string line;
    bool inProgram = false;
    while (reader.NextLine(line)) {
        if (inProgram) {
            inProgram = line.find(kProgramClosing) == std::string::npos;
        } else if (line.find(kProgramOpening) != std::string::npos) {
            names.push_back(GetLineAttribute(line, kProgramNameAttribute));
            inProgram = true;
        }
    }
    // A line too long for the format makes the whole document unreadable.
    if (reader.HitLongLine()) return;
    out.insert(out.end(), names.begin(), names.end());
}

int32_t ZORPluginMetaClass::GetParameterCount() const {
    return static_cast<int32_t>(parameters_.size());
}

void ZORPluginMetaClass::GetControlNameSet(std::string& out, int32_t id,
                                           const ChannelConfig& /*config*/) const {
    const ZORParameterInfo* info = FindParameterInfo(id);
    out = info != nullptr ? info->name : "";
}

void ZORPluginMetaClass::GetUnits(std::string& out, int32_t index) const {
    out.clear();
    const ZORParameterInfo* info = GetParameterInfo(index);
    if (info == nullptr) return;
    if (!info->units.empty()) {
        if (info->units != kNoUnits) out = info->units;
        return;
    }
    if (info->type >= 0 && info->type < static_cast<int32_t>(kDefaultUnits.size())) {
        out = kDefaultUnits[static_cast<size_t>(info->type)];
    }
}

void ZORPluginMetaClass::FormatValue(std::string& out, int32_t index, float value,
                                     int32_t maxChars) const {
    out.clear();
    const ZORParameterInfo* info = GetParameterInfo(index);
    if (info == nullptr) return;
    switch (info->type) {
        case kParamDiscrete:
        case kParamOnOff:
        case kParamInteger:
            out = DiscreteText(*info, value, maxChars);
            break;
        case kParamFrequency:
            out = FormatNumber(value, 0, true);
            break;
        case kParamStepByCount:
        case kParamStepGiven:
            out = FormatNumber(value, 2, false);
            break;
        default:
            out = FormatNumber(value, 1, false);
            break;
    }
    if (maxChars >= 0 && out.size() > static_cast<size_t>(maxChars)) {
        out.resize(static_cast<size_t>(maxChars));
    }
}

void ZORPluginMetaClass::FormatValueWithUnits(std::string& out, int32_t index, float value,
                                              int32_t maxChars) const {
    FormatValue(out, index, value, maxChars);
    if (GetParameterInfo(index) == nullptr) return;
    std::string units;
    GetUnits(units, index);
    out.append(" ").append(units);
}

const ZORParameterInfo* ZORPluginMetaClass::GetParameterInfo(int32_t index) const {
    if (index < 0 || index >= GetParameterCount()) return nullptr;
    return &parameters_[static_cast<size_t>(index)];
}

const ZORParameterInfo* ZORPluginMetaClass::FindParameterInfo(int32_t id) const {
    for (const ZORParameterInfo& info : parameters_) {
        if (info.id == id) return &info;
    }
    return nullptr;
}

void ZORPluginMetaClass::FindParameterIndex(int32_t& out, int32_t id) const {
    const ZORParameterInfo* info = FindParameterInfo(id);
    out = info != nullptr ? info->index : -1;
}

void ZORPluginMetaClass::GetMeterNames(const ChannelConfig& /*config*/,
                                       std::vector<ZORMeterInfo>& out) const {
    out.clear();
}

void ZORPluginMetaClass::GetPreferencesName(std::string& out) const {
    out = kPreferencesPrefix + GetProductName() + kPreferencesEnding;
}

void ZORPluginMetaClass::AddParameter(const ZORParameterInfo& info) {
    if (validateParameter && !validateParameter(info)) return;
    if (FindParameterInfo(info.id) != nullptr) return;
    ZORParameterInfo& added = parameters_.emplace_back(info);
    added.index = static_cast<int32_t>(parameters_.size() - 1);
    if (added.type == kParamDiscrete && added.discreteValues.empty()) {
        added.discreteValues = {kOffLabel, kOnLabel};
    }
    added.labelsByValue.clear();
    if (IsDiscreteType(added.type)) {
        for (const std::string& entry : added.discreteValues)
            ParseLabel(entry, added.labelsByValue);
    }
}

}  // namespace vorix
