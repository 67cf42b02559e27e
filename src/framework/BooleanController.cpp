#include "framework/BooleanController.h"

namespace vorix {

BooleanController::BooleanController(PluginServices* services)
    : BooleanController(services, 0, 0, nullptr) {}

BooleanController::BooleanController(PluginServices* services, Value defaultValue,
                                     std::uint32_t controlId, CentralController* controller)
    : CentralController(services, 0, 1, defaultValue, controlId, controller) {}

}  // namespace vorix
