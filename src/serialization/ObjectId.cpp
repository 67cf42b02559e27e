#include "serialization/ObjectId.h"

#include <atomic>

namespace vorix::Serialization {
namespace {

// Archives live on one thread each, but separate instances may save side by side; an atomic
// keeps that race-free without a lock.
std::atomic<std::uint64_t> gLastObjectId{0};

}  // namespace

std::uint64_t NextObjectId() noexcept {
    return gLastObjectId.fetch_add(1, std::memory_order_relaxed) + 1;
}

}  // namespace vorix::Serialization
