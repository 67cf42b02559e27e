#pragma once

#include "framework/CentralController.h"

namespace vorix {

// A controller of an on/off value: range 0 to 1. Main thread only.
class BooleanController : public CentralController {
  public:
    // Main thread. Off by default, id 0, following nobody.
    explicit BooleanController(PluginServices* services);

    // Main thread. As CentralController's constructor, with the range fixed at 0 to 1.
    BooleanController(PluginServices* services, Value defaultValue, std::uint32_t controlId,
                      CentralController* controller);
};

}  // namespace vorix
