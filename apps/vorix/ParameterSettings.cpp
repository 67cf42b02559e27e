#include "vorix/ParameterSettings.h"

#include <strings.h>

#include <cerrno>
#include <cmath>
#include <cstdlib>

#include "core/ZORParameterInfo.h"
#include "host/ZORVorixMetaClass.h"
#include "vorix/Arguments.h"
#include "vorix/ToolErrors.h"

namespace vorix::cli {
namespace {

bool SameLetters(std::string_view a, const std::string& b) {
    return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

// The editor's name of a row, where the product has one.
std::string EditorName(const ZORPluginMetaClass& metaClass, const ZORParameterInfo& info,
                       const ChannelConfig& config) {
    const auto* product = dynamic_cast<const ZORVorixMetaClass*>(&metaClass);
    if (product == nullptr) return {};
    std::string name;
    product->GetParameterName(name, info.id, config);
    return name;
}

// Every name the editor shows for a real parameter has a blank in it ("A: Gain", "Left Gain");
// the placeholders of rows without one ("<EMPTY>", "n/a") have none, and are never matched.
bool IsRealName(const std::string& editorName) {
    return editorName.find(' ') != std::string::npos;
}

}  // namespace

ParameterSetting ParseParameterSetting(std::string_view text, const ZORPluginMetaClass& metaClass) {
    const std::size_t equals = text.rfind('=');
    if (equals == std::string_view::npos || equals == 0) {
        throw UsageError("--set wants NAME=VALUE, not \"" + std::string(text) + "\"");
    }
    ParameterSetting setting;
    setting.name = std::string(text.substr(0, equals));
    setting.valueText = std::string(text.substr(equals + 1));
    // The stereo layout knows every name but the mono "Output Gain"; a name that fits neither
    // layout is refused.
    try {
        FindParameterByName(metaClass, setting.name, ChannelConfig{2, 2});
    } catch (const UsageError&) {
        FindParameterByName(metaClass, setting.name, ChannelConfig{1, 1});
    }
    char* end = nullptr;
    errno = 0;
    setting.value = std::strtod(setting.valueText.c_str(), &end);
    const bool whole = !setting.valueText.empty() &&
                       end == setting.valueText.c_str() + setting.valueText.size() &&
                       errno != ERANGE && std::isfinite(setting.value);
    if (!whole) {
        throw UsageError("the value of " + setting.name + " must be a number, not \"" +
                         setting.valueText + "\"");
    }
    return setting;
}

const ZORParameterInfo& FindParameterByName(const ZORPluginMetaClass& metaClass,
                                            std::string_view name, const ChannelConfig& config) {
    for (int32_t index = 0; index < metaClass.GetParameterCount(); ++index) {
        const ZORParameterInfo* info = metaClass.GetParameterInfo(index);
        if (info == nullptr) continue;
        if (SameLetters(name, info->name)) return *info;
        const std::string editorName = EditorName(metaClass, *info, config);
        if (IsRealName(editorName) && SameLetters(name, editorName)) return *info;
    }
    throw UsageError("there is no parameter called \"" + std::string(name) +
                     "\"; give an internal name such as prmControl_0_Gain or prmLeftGain, or an "
                     "editor name such as \"A: Gain\"");
}

}  // namespace vorix::cli
