#include "host/ZORPluginControl_Discrete.h"

#include <utility>

#include "hostlib/ValueText.h"

namespace vorix {

ZORPluginControl_Discrete::ZORPluginControl_Discrete(std::int32_t id, std::string nameSet,
                                                     std::int32_t minimum, std::int32_t maximum,
                                                     std::int32_t defaultValue, bool automatable,
                                                     std::map<std::int32_t, std::string> labels)
    : CPluginControl_Discrete(id, std::move(nameSet), minimum, maximum, defaultValue, automatable),
      labels_(std::move(labels)) {}

void ZORPluginControl_Discrete::GetValueString(char* buffer, std::int32_t maxChars,
                                               std::int32_t controlValue) const {
    const auto label = labels_.find(ControlToValue(controlValue));
    if (label == labels_.end() || label->second.size() >= static_cast<std::size_t>(maxChars)) {
        CPluginControl_Discrete::GetValueString(buffer, maxChars, controlValue);
        return;
    }
    CopyToBuffer(label->second, buffer, maxChars);
}

std::int32_t ZORPluginControl_Discrete::TextToControlValue(std::string_view text) const {
    for (const auto& [value, label] : labels_) {
        if (text == label) return ValueToControl(value);
    }
    return CPluginControl_Discrete::TextToControlValue(text);
}

bool ZORPluginControl_Discrete::IsKeyValid(char key) const {
    if (labels_.empty()) return CPluginControl_Discrete::IsKeyValid(key);
    const auto code = static_cast<unsigned char>(key);
    return (code >= 0x20 && code < 0x7F) || CPluginControl_Discrete::IsKeyValid(key);
}

}  // namespace vorix
