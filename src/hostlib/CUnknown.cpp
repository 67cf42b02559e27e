#include "hostlib/CUnknown.h"

namespace vorix::DOA {

CUnknown::~CUnknown() = default;

std::int32_t CUnknown::AddReference() noexcept {
    return references_.fetch_add(1, std::memory_order_relaxed) + 1;
}

std::int32_t CUnknown::ReleaseReference() noexcept {
    const std::int32_t remaining = references_.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (remaining == 0) delete this;
    return remaining;
}

}  // namespace vorix::DOA
