#pragma once

#include <cstdint>
#include <new>

#include "hostlib/LibraryErrors.h"

namespace vorix {

// Runs one host entry of the library so that no exception reaches the host: memory exhaustion
// answers kErrOutOfMemory, any other failure kErrFailed. Main thread.
template <typename Operation>
std::int32_t GuardHostEntry(Operation&& operation) noexcept {
    try {
        return operation();
    } catch (const std::bad_alloc&) {
        return kErrOutOfMemory;
    } catch (...) {
        return kErrFailed;
    }
}

}  // namespace vorix
