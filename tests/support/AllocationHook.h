#pragma once

#include <cstddef>

namespace vorix::test {

// Counts heap allocations made by the current thread while an instance is alive.
// The global operator new of every test executable reports to it, so a test can wrap
// a real-time call and assert that it allocated nothing.
class AllocationCounter {
public:
    AllocationCounter();
    ~AllocationCounter();
    AllocationCounter(const AllocationCounter&) = delete;
    AllocationCounter& operator=(const AllocationCounter&) = delete;

    std::size_t Count() const;

private:
    std::size_t start_;
    AllocationCounter* outer_;
};

}  // namespace vorix::test
