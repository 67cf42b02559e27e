#include "hostlib/PlugInChunk.h"

#include <algorithm>
#include <cstring>

#include "framework/Exceptions.h"
#include "hostlib/BigEndian.h"

namespace vorix {
namespace {

constexpr std::size_t kSizeField = 0;
constexpr std::size_t kVersionField = 4;
constexpr std::size_t kManufacturerField = 8;
constexpr std::size_t kProductField = 12;
constexpr std::size_t kPlugInField = 16;
constexpr std::size_t kChunkIdField = 20;
constexpr std::size_t kNameField = 24;

}  // namespace

PlugInChunk::PlugInChunk() : bytes_(kHeaderSize, 0) {
    SetFieldAt(kSizeField, kHeaderSize);
}

PlugInChunk PlugInChunk::FromBytes(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < static_cast<std::size_t>(kHeaderSize)) VORIX_THROW(AppFrame::BadParameter);
    const auto declared = static_cast<std::int32_t>(LoadBigEndian32(bytes.data()));
    if (declared < kHeaderSize || static_cast<std::size_t>(declared) != bytes.size()) {
        VORIX_THROW(AppFrame::BadParameter);
    }
    PlugInChunk chunk;
    chunk.bytes_.assign(bytes.begin(), bytes.end());
    return chunk;
}

std::int32_t PlugInChunk::GetSize() const noexcept {
    return FieldAt(kSizeField);
}

void PlugInChunk::SetSize(std::int32_t totalSize) {
    if (totalSize < kHeaderSize) VORIX_THROW(AppFrame::BadParameter);
    bytes_.resize(static_cast<std::size_t>(totalSize), 0);
    SetFieldAt(kSizeField, totalSize);
}

std::span<std::uint8_t> PlugInChunk::Payload() noexcept {
    return std::span(bytes_).subspan(kHeaderSize);
}

std::span<const std::uint8_t> PlugInChunk::Payload() const noexcept {
    return std::span(bytes_).subspan(kHeaderSize);
}

void PlugInChunk::SetIdentity(const Identity& identity) noexcept {
    SetFieldAt(kVersionField, kHeaderVersion);
    SetFieldAt(kManufacturerField, identity.manufacturerId);
    SetFieldAt(kProductField, identity.productId);
    SetFieldAt(kPlugInField, identity.plugInId);
    SetFieldAt(kChunkIdField, identity.chunkId);
    std::uint8_t* name = bytes_.data() + kNameField;
    std::fill(name, name + kNameSize, std::uint8_t{0});
    std::memcpy(name, identity.name.data(), std::min(identity.name.size(), kNameSize - 1));
}

std::int32_t PlugInChunk::GetChunkId() const noexcept {
    return FieldAt(kChunkIdField);
}

std::int32_t PlugInChunk::GetPlugInId() const noexcept {
    return FieldAt(kPlugInField);
}

std::string PlugInChunk::GetName() const {
    const auto* name = bytes_.data() + kNameField;
    const auto* end = std::find(name, name + kNameSize, std::uint8_t{0});
    return std::string(name, end);
}

std::int32_t PlugInChunk::FieldAt(std::size_t offset) const noexcept {
    return static_cast<std::int32_t>(LoadBigEndian32(bytes_.data() + offset));
}

void PlugInChunk::SetFieldAt(std::size_t offset, std::int32_t value) noexcept {
    StoreBigEndian32(bytes_.data() + offset, static_cast<std::uint32_t>(value));
}

}  // namespace vorix
