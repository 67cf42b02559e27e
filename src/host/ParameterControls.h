#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "core/ZORParameterInfo.h"

namespace vorix {

class CPluginControl;

// The host controls of the product's parameters: their ids, and the control each parameter
// becomes. Any thread but audio (controls allocate).

// The host's number of the master bypass control, and the offset of parameter 0's number.
inline constexpr std::int32_t kMasterBypassControl = 1;
inline constexpr std::int32_t kFirstParameterControl = 2;

// The id of parameter `index`'s control: "ct", then 'a' + index / 26, then 'a' + index % 26, so
// "ctaa" for 0, "ctba" for 26. Any thread.
std::int32_t ControlIdOfIndex(std::int32_t index) noexcept;
// The parameter index of a control id of that form, -1 for any other id. Any thread.
std::int32_t ControlIdToIndex(std::int32_t id) noexcept;

// The control of parameter `info`, by its type, starting at `startValue`, named by `nameSet`.
// Throws AppFrame::BadParameter for a type the table does not know, or for a range the control
// cannot take. Main thread.
std::unique_ptr<CPluginControl> MakeParameterControl(const ZORParameterInfo& info,
                                                     double startValue, std::string nameSet);

}  // namespace vorix
