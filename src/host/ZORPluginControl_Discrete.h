#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "hostlib/CPluginControl_Discrete.h"

namespace vorix {

// A whole-step control of the product's table: a list parameter shows and reads its labels
// ("Off", "On"), a plain number parameter behaves as the library's discrete control. Read-only
// after construction; any thread.
class ZORPluginControl_Discrete : public CPluginControl_Discrete {
  public:
    // Any thread. `labels` maps values to their labels, empty for a plain number; throws
    // AppFrame::BadParameter when `minimum` is above `maximum`.
    ZORPluginControl_Discrete(std::int32_t id, std::string nameSet, std::int32_t minimum,
                              std::int32_t maximum, std::int32_t defaultValue, bool automatable,
                              std::map<std::int32_t, std::string> labels);

    // The value's label when it has one that fits, else the number. Any thread.
    void GetValueString(char* buffer, std::int32_t maxChars,
                        std::int32_t controlValue) const override;
    // A label typed as it is shown stands for its value; anything else reads as a number. Any
    // thread; throws AppFrame::BadParameter for text that is neither.
    std::int32_t TextToControlValue(std::string_view text) const override;
    // Labels may hold letters: every visible character may be typed. Any thread.
    bool IsKeyValid(char key) const override;

  private:
    std::map<std::int32_t, std::string> labels_;
};

}  // namespace vorix
