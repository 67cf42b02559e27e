#pragma once

#include <cstdint>

namespace vorix::Serialization {

// Takes the next object id from the one counter of the process. Ids only go up and start at 1,
// so an id is unique over every archive of the process: two archives in one document cannot
// clash, and a second save of the same objects gives other ids. Any thread; lock-free.
std::uint64_t NextObjectId() noexcept;

}  // namespace vorix::Serialization
