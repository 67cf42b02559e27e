#pragma once

#include <cstdint>

#include "hostlib/GroupInterfaces.h"

namespace vorix {

// The group as the plug-in file's entry sees it: something to initialise once it is stored, and
// to destroy at the last close. Main thread.
class CProcessGroupInterface : public IProcessGroup {
  public:
    CProcessGroupInterface() = default;
    CProcessGroupInterface(const CProcessGroupInterface&) = delete;
    CProcessGroupInterface& operator=(const CProcessGroupInterface&) = delete;
    virtual ~CProcessGroupInterface() = default;

    // Main thread, once, right after the group is made: builds the effect types. Answers 0, or an
    // error whose low 16 bits the file's entry reports (kErrOutOfMemory when memory ran out).
    // Never throws.
    virtual std::int32_t Initialize() noexcept = 0;
};

}  // namespace vorix
