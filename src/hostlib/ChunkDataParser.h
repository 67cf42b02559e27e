#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vorix {

// Builds and reads the payload of the "Complete Controls State" chunk: a marker of four bytes 1,
// then one item per control: a two-character kind tag, the control's name zero-terminated, zero
// padding to a multiple of 4 from the payload's start, and the value high byte first. Reading is
// all or nothing: truncated, oversized or malformed data leave the parser empty and unparsed, and
// no byte outside the data is ever read. Main thread (one parser per process).
class ChunkDataParser {
  public:
    enum class Kind : std::uint8_t { kFloat = 1, kLong = 2, kDouble = 3, kShort = 4 };

    // One item as read or added. The value is held as a double, which holds every kind exactly.
    struct Item {
        Kind kind;
        double value;
    };

    // The four bytes that open a non-empty payload.
    static constexpr std::uint8_t kMarker[4] = {1, 1, 1, 1};
    // The reader looks at no more characters of a name than this.
    static constexpr std::size_t kMaxNameLength = 255;
    // The last-parsed position when nothing has been parsed.
    static constexpr std::int64_t kNotParsed = -1;

    // Forgets every item; nothing counts as parsed. Main thread.
    void Clear() noexcept;

    // Files an item under a name, replacing one of the same name. Throws AppFrame::BadParameter
    // for a name the reader could not find again: longer than 255 characters or with a zero
    // byte. Main thread.
    void AddFloat(std::string_view name, float value);
    void AddLong(std::string_view name, std::int32_t value);
    void AddDouble(std::string_view name, double value);
    void AddShort(std::string_view name, std::int16_t value);

    // The item filed under a name, if any. Main thread.
    std::optional<Item> Find(std::string_view name) const;
    std::size_t GetItemCount() const noexcept { return names_.size(); }

    // The size of the payload the items make: 0 with no item, no marker either. Main thread.
    std::size_t GetChunkDataSize() const noexcept;
    // Writes the payload into `out`, which must be GetChunkDataSize() bytes long; throws
    // AppFrame::BadParameter otherwise. Main thread.
    void WriteChunkData(std::span<std::uint8_t> out) const;

    // Replaces the items with those of a payload. False, with the parser empty and unparsed, when
    // the data are refused. Main thread.
    bool ParseChunkData(std::span<const std::uint8_t> data);
    // Where the last parse ended in its payload, or kNotParsed. Main thread.
    std::int64_t GetLastParsedPosition() const noexcept { return lastParsed_; }

  private:
    void File(std::string_view name, Kind kind, double value);
    bool ParseItems(std::span<const std::uint8_t> data);

    std::vector<std::string> names_;
    std::vector<Kind> kinds_;
    std::vector<double> values_;
    std::map<std::string, std::size_t, std::less<>> positions_;  // name to item, for lookups
    std::int64_t lastParsed_ = kNotParsed;
};

}  // namespace vorix
