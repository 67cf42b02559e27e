#pragma once

#include <cstdint>

namespace vorix::Serialization {

class Serializable;

// What an archive knows of one object it has written or read: the object's id, the object
// (null when a reader could not make one), how often a reader has handed it out, and whether a
// writer has finished writing it.
struct ObjectRecord {
    std::uint64_t mId = 0;
    Serializable* mObject = nullptr;
    std::uint32_t mRefCount = 0;
    bool mComplete = false;
};

}  // namespace vorix::Serialization
