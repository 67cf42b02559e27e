#include "lv2/Lv2PortRecord.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

#include "core/PluginCore.h"
#include "core/ZORPluginMetaClass.h"
#include "lv2/Lv2ControlInputs.h"

namespace vorix {

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

// One "symbol value" line; false for anything else.
bool ReadLine(std::string_view line, Lv2PortValue& out) {
    const auto blank = std::find_if(line.begin(), line.end(), IsBlank);
    if (blank == line.begin() || blank == line.end()) return false;
    const auto number = std::find_if_not(blank, line.end(), IsBlank);
    const char* first = line.data() + (number - line.begin());
    const char* last = line.data() + line.size();
    float value = 0.0f;
    const auto result = std::from_chars(first, last, value);
    if (result.ec != std::errc() || result.ptr != last) return false;
    out.symbol.assign(line.begin(), blank);
    out.value = value;
    return true;
}

}  // namespace

std::string Lv2PortRecordText(const std::vector<Lv2PortValue>& values) {
    std::string text;
    for (const Lv2PortValue& entry : values) {
        std::array<char, 64> number{};
        const auto result =
            std::to_chars(number.data(), number.data() + number.size(), entry.value);
        if (result.ec != std::errc()) continue;
        text += entry.symbol;
        text += ' ';
        text.append(number.data(), result.ptr);
        text += '\n';
    }
    return text;
}

std::vector<Lv2PortValue> ReadLv2PortRecord(std::string_view text) {
    std::vector<Lv2PortValue> values;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        Lv2PortValue entry;
        if (ReadLine(text.substr(0, end), entry)) values.push_back(std::move(entry));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return values;
}

std::vector<Lv2PortValue> Lv2EnginePortValues(PluginCore& core,
                                              const ZORPluginMetaClass& metaClass) {
    std::vector<Lv2PortValue> values;
    for (std::int32_t index = 0; index < metaClass.GetParameterCount(); ++index) {
        const ZORParameterInfo& info = *metaClass.GetParameterInfo(index);
        if (!Lv2ControlInputs::IsHostInput(info)) continue;
        const auto value = static_cast<float>(core.GetParameterByIndex(index));
        values.push_back({info.name, std::isnan(value) ? info.defaultValue
                                                       : std::clamp(value, info.min, info.max)});
    }
    return values;
}

}  // namespace vorix
