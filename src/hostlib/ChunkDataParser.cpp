#include "hostlib/ChunkDataParser.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

#include "framework/Exceptions.h"
#include "hostlib/BigEndian.h"

namespace vorix {
namespace {

using Kind = ChunkDataParser::Kind;

struct KindTag {
    Kind kind;
    char tag[3];
    std::size_t width;
};

constexpr KindTag kKindTags[] = {
    {Kind::kFloat, "f_", 4},
    {Kind::kLong, "l_", 4},
    {Kind::kDouble, "d_", 8},
    {Kind::kShort, "s_", 4},  // two bytes used of a four-byte slot
};

constexpr std::size_t kTagSize = 2;

const KindTag& TagOf(Kind kind) {
    return *std::find_if(std::begin(kKindTags), std::end(kKindTags),
                         [kind](const KindTag& entry) { return entry.kind == kind; });
}

const KindTag* TagAt(const std::uint8_t* bytes) {
    for (const KindTag& entry : kKindTags) {
        if (bytes[0] == static_cast<std::uint8_t>(entry.tag[0]) &&
            bytes[1] == static_cast<std::uint8_t>(entry.tag[1])) {
            return &entry;
        }
    }
    return nullptr;
}

constexpr std::size_t AlignedToFour(std::size_t offset) {
    return (offset + 3) & ~std::size_t{3};
}

// The offset behind an item that starts at `offset`.
std::size_t ItemEnd(std::size_t offset, std::size_t nameLength, Kind kind) {
    return AlignedToFour(offset + kTagSize + nameLength + 1) + TagOf(kind).width;
}

void StoreValue(std::uint8_t* out, Kind kind, double value) {
    switch (kind) {
        case Kind::kFloat:
            StoreBigEndian32(out, std::bit_cast<std::uint32_t>(static_cast<float>(value)));
            break;
        case Kind::kLong:
            StoreBigEndian32(out, static_cast<std::uint32_t>(static_cast<std::int32_t>(value)));
            break;
        case Kind::kDouble:
            StoreBigEndian64(out, std::bit_cast<std::uint64_t>(value));
            break;
        case Kind::kShort:
            StoreBigEndian16(out, static_cast<std::uint16_t>(static_cast<std::int16_t>(value)));
            break;
    }
}

double LoadValue(const std::uint8_t* in, Kind kind) {
    switch (kind) {
        case Kind::kFloat:
            return std::bit_cast<float>(LoadBigEndian32(in));
        case Kind::kLong:
            return static_cast<std::int32_t>(LoadBigEndian32(in));
        case Kind::kDouble:
            return std::bit_cast<double>(LoadBigEndian64(in));
        case Kind::kShort:
            return static_cast<std::int16_t>(LoadBigEndian16(in));
    }
    return 0.0;
}

}  // namespace

void ChunkDataParser::Clear() noexcept {
    names_.clear();
    kinds_.clear();
    values_.clear();
    positions_.clear();
    lastParsed_ = kNotParsed;
}

void ChunkDataParser::AddFloat(std::string_view name, float value) {
    File(name, Kind::kFloat, value);
}

void ChunkDataParser::AddLong(std::string_view name, std::int32_t value) {
    File(name, Kind::kLong, value);
}

void ChunkDataParser::AddDouble(std::string_view name, double value) {
    File(name, Kind::kDouble, value);
}

void ChunkDataParser::AddShort(std::string_view name, std::int16_t value) {
    File(name, Kind::kShort, value);
}

void ChunkDataParser::File(std::string_view name, Kind kind, double value) {
    if (name.size() > kMaxNameLength || name.find('\0') != std::string_view::npos) {
        VORIX_THROW(AppFrame::BadParameter);
    }
    if (auto found = positions_.find(name); found != positions_.end()) {
        kinds_[found->second] = kind;
        values_[found->second] = value;
        return;
    }
    names_.emplace_back(name);
    kinds_.push_back(kind);
    values_.push_back(value);
    positions_.emplace(name, names_.size() - 1);
}

std::optional<ChunkDataParser::Item> ChunkDataParser::Find(std::string_view name) const {
    const auto found = positions_.find(name);
    if (found == positions_.end()) return std::nullopt;
    return Item{kinds_[found->second], values_[found->second]};
}

std::size_t ChunkDataParser::GetChunkDataSize() const noexcept {
    if (names_.empty()) return 0;
    std::size_t size = sizeof kMarker;
    for (std::size_t i = 0; i < names_.size(); ++i)
        size = ItemEnd(size, names_[i].size(), kinds_[i]);
    return size;
}

void ChunkDataParser::WriteChunkData(std::span<std::uint8_t> out) const {
    if (out.size() != GetChunkDataSize()) VORIX_THROW(AppFrame::BadParameter);
    if (out.empty()) return;
    std::fill(out.begin(), out.end(), std::uint8_t{0});
    std::memcpy(out.data(), kMarker, sizeof kMarker);
    std::size_t offset = sizeof kMarker;
    for (std::size_t i = 0; i < names_.size(); ++i) {
        std::memcpy(out.data() + offset, TagOf(kinds_[i]).tag, kTagSize);
        std::memcpy(out.data() + offset + kTagSize, names_[i].data(), names_[i].size());
        const std::size_t end = ItemEnd(offset, names_[i].size(), kinds_[i]);
        StoreValue(out.data() + end - TagOf(kinds_[i]).width, kinds_[i], values_[i]);
        offset = end;
    }
}

bool ChunkDataParser::ParseChunkData(std::span<const std::uint8_t> data) {
    Clear();
    if (data.empty()) {
        lastParsed_ = 0;
        return true;
    }
    if (data.size() < sizeof kMarker || std::memcmp(data.data(), kMarker, sizeof kMarker) != 0 ||
        !ParseItems(data)) {
        Clear();
        return false;
    }
    lastParsed_ = static_cast<std::int64_t>(data.size());
    return true;
}

bool ChunkDataParser::ParseItems(std::span<const std::uint8_t> data) {
    const std::size_t size = data.size();
    std::size_t offset = sizeof kMarker;
    while (offset < size) {
        if (size - offset < kTagSize) return false;
        const KindTag* tag = TagAt(data.data() + offset);
        if (tag == nullptr) return false;
        const std::size_t nameStart = offset + kTagSize;
        const std::size_t lookLimit = std::min(size, nameStart + kMaxNameLength + 1);
        const auto* nameBegin = data.data() + nameStart;
        const auto* terminator = std::find(nameBegin, data.data() + lookLimit, std::uint8_t{0});
        if (terminator == data.data() + lookLimit) return false;
        const std::size_t nameLength = static_cast<std::size_t>(terminator - nameBegin);
        const std::size_t end = ItemEnd(offset, nameLength, tag->kind);
        if (end > size) return false;
        File(std::string_view(reinterpret_cast<const char*>(nameBegin), nameLength), tag->kind,
             LoadValue(data.data() + end - tag->width, tag->kind));
        offset = end;
    }
    return true;
}

}  // namespace vorix
