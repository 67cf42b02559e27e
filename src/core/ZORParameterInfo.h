#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vorix {

// How a parameter's value behaves and reads as text; each becomes one kind of host control.
enum ZORParameterType : int32_t {
    kParamDiscrete = 0,
    kParamOnOff = 1,
    kParamContinuous = 2,
    kParamInteger = 3,
    kParamLevelDb = 4,
    kParamBoostCutDb = 5,
    kParamFrequency = 6,
    kParamStepByCount = 7,
    kParamStepGiven = 8,
    kParamTimeLinear = 9,
    kParamTimeLog = 10,
    kParamRatioLog = 11,
};

// The parameter is live only while the editor is open.
constexpr int32_t kParamFlagEditorOnly = 2;

// One parameter's description, as the product's table holds it.
struct ZORParameterInfo {
    int32_t index = -1;  // position in the table, set when added
    int32_t type = kParamContinuous;
    float min = 0.0f;
    float max = 1.0f;
    float defaultValue = 0.0f;  // `default` in the product's vocabulary
    float step = 0.0f;
    std::string units;
    std::vector<std::string> discreteValues;          // "label;value"
    std::vector<std::vector<std::string>> labelSets;  // per value, entry k the form for k chars
    bool automatable = true;
    int32_t id = 0;  // the product's own number or four characters
    int32_t flags = 0;
    const char* name = "";  // the internal name

    // Filled by AddParameter from `discreteValues`: value to label.
    std::map<int32_t, std::string> labelsByValue;
};

}  // namespace vorix
