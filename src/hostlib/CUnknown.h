#pragma once

#include <atomic>
#include <cstdint>

namespace vorix::DOA {

// The root of the library's objects that a host holds: a count of references, starting at 1 for
// the maker, and deletion when the last one goes.
class CUnknown {
  public:
    CUnknown() = default;
    CUnknown(const CUnknown&) = delete;
    CUnknown& operator=(const CUnknown&) = delete;

    // Any thread but audio. Answers the new count.
    std::int32_t AddReference() noexcept;
    // Any thread but audio; deletes the object when the count reaches 0. Answers the new count.
    std::int32_t ReleaseReference() noexcept;

  protected:
    virtual ~CUnknown();

  private:
    std::atomic<std::int32_t> references_{1};
};

}  // namespace vorix::DOA
