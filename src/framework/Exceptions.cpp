#include "framework/Exceptions.h"

#include <atomic>

namespace vorix::AppFrame {
namespace {

// Atomic only so that two threads raising at once cannot tear a word; the pair may still mix
// the file of one throw with the line of another, which is acceptable for a debugging aid.
std::atomic<const char*> gLastFile{nullptr};
std::atomic<int> gLastLine{0};

}  // namespace

Exception::Exception(const char* file, int line) noexcept {
    gLastFile.store(file, std::memory_order_relaxed);
    gLastLine.store(line, std::memory_order_relaxed);
}

Exception::~Exception() = default;

const char* LastExceptionFile() noexcept {
    return gLastFile.load(std::memory_order_relaxed);
}

int LastExceptionLine() noexcept {
    return gLastLine.load(std::memory_order_relaxed);
}

}  // namespace vorix::AppFrame
