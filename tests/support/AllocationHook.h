#pragma once

#include <cstddef>

namespace vorix::test {

// Counts heap allocations made by the current thread while an instance is alive.
// The global operator new of every test executable reports to it, so a test can wrap
// a real-time call and assert that it allocated nothing.
class AllocationCounter {
public:
    AllocationCounter();
    AllocationCounter(const AllocationCounter&) = delete;
    AllocationCounter& operator=(const AllocationCounter&) = delete;

    std::size_t Count() const;

    // False where the sanitizer runtime owns operator new (ThreadSanitizer): nothing is counted
    // there, and tests that rely on the count skip; the other builds run them.
    static bool Available();

private:
    std::size_t start_;
};

}  // namespace vorix::test
