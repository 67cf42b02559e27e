#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vorix {

// One chunk as the host stores it with an insert: a header of 56 bytes, then the payload the
// process fills. The header's fields are 32-bit numbers high byte first:
//   0 total size, header included   4 header version   8 manufacturer id   12 product id
//   16 plug-in id (the effect type)  20 chunk id        24 name, 32 bytes, zero-padded
// The plug-in sets the total size and the payload; the library fills the rest when the chunk
// leaves for the host. Main thread.
class PlugInChunk {
  public:
    static constexpr std::int32_t kHeaderSize = 56;
    static constexpr std::size_t kNameSize = 32;
    static constexpr std::int32_t kHeaderVersion = 1;

    // The header's identity fields, as the library fills them.
    struct Identity {
        std::int32_t manufacturerId;
        std::int32_t productId;
        std::int32_t plugInId;
        std::int32_t chunkId;
        std::string_view name;
    };

    // An empty chunk: a bare header with total size 56. Main thread.
    PlugInChunk();

    // A chunk from bytes the host kept; throws AppFrame::BadParameter unless there is a whole
    // header whose total size is exactly the number of bytes. Main thread.
    static PlugInChunk FromBytes(std::span<const std::uint8_t> bytes);

    // The total size, header included. Main thread.
    std::int32_t GetSize() const noexcept;
    // Sets the total size and makes room for the payload it implies; new payload bytes are zero.
    // Throws AppFrame::BadParameter for a size below the header's. Main thread.
    void SetSize(std::int32_t totalSize);

    // The bytes behind the header: total size less 56. Main thread.
    std::span<std::uint8_t> Payload() noexcept;
    std::span<const std::uint8_t> Payload() const noexcept;

    // The whole chunk, header first. Main thread.
    std::span<const std::uint8_t> Bytes() const noexcept { return bytes_; }

    // Writes the fields behind the size: version, ids and the name cut to 31 characters. Main
    // thread.
    void SetIdentity(const Identity& identity) noexcept;
    // The header's fields as they stand. Main thread.
    std::int32_t GetChunkId() const noexcept;
    std::int32_t GetPlugInId() const noexcept;
    std::string GetName() const;

  private:
    std::int32_t FieldAt(std::size_t offset) const noexcept;
    void SetFieldAt(std::size_t offset, std::int32_t value) noexcept;

    std::vector<std::uint8_t> bytes_;
};

}  // namespace vorix
