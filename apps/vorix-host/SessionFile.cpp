#include "vorix-host/SessionFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>

#include "framework/ScopeGuards.h"
#include "vorix-host/FileReplacement.h"
#include "vorix-host/HostError.h"

namespace vorix {
namespace {

// CRC-32 with the reflected polynomial 0xEDB88320, initial and final inversion.
std::uint32_t Crc32(std::span<const std::uint8_t> bytes) noexcept {
    static const std::array<std::uint32_t, 256> table = [] {
        std::array<std::uint32_t, 256> entries{};
        for (std::uint32_t n = 0; n < 256; ++n) {
            std::uint32_t c = n;
            for (int k = 0; k < 8; ++k)
                c = (c & 1) != 0 ? 0xEDB88320u ^ (c >> 1) : c >> 1;
            entries[n] = c;
        }
        return entries;
    }();
    std::uint32_t crc = 0xFFFFFFFFu;
    for (const std::uint8_t byte : bytes)
        crc = table[(crc ^ byte) & 0xFF] ^ (crc >> 8);
    return crc ^ 0xFFFFFFFFu;
}

void PutWord(std::vector<std::uint8_t>& out, std::uint32_t word) {
    for (int shift = 24; shift >= 0; shift -= 8)
        out.push_back(static_cast<std::uint8_t>(word >> shift));
}

// Reads the session's fields in order; any read past the end is damage.
class SessionReader {
  public:
    SessionReader(std::span<const std::uint8_t> bytes, const std::string& source)
        : bytes_(bytes), source_(source) {}

    std::uint32_t Word() {
        const auto field = Bytes(4);
        return (std::uint32_t{field[0]} << 24) | (std::uint32_t{field[1]} << 16) |
               (std::uint32_t{field[2]} << 8) | field[3];
    }
    std::span<const std::uint8_t> Bytes(std::size_t count) {
        if (count > bytes_.size() - position_) Damaged();
        const auto field = bytes_.subspan(position_, count);
        position_ += count;
        return field;
    }
    // A count of items of at least `itemSize` bytes each that the rest could hold.
    std::uint32_t Count(std::size_t itemSize) {
        const std::uint32_t count = Word();
        if (count > (bytes_.size() - position_) / itemSize) Damaged();
        return count;
    }
    bool AtEnd() const noexcept { return position_ == bytes_.size(); }
    [[noreturn]] void Damaged() const {
        throw HostError("The session file " + source_ + " is damaged.");
    }

  private:
    std::span<const std::uint8_t> bytes_;
    const std::string& source_;
    std::size_t position_ = 0;
};

}  // namespace

std::vector<std::uint8_t> EncodeSession(const std::vector<SessionInsert>& inserts) {
    std::vector<std::uint8_t> out(std::begin(kSessionMagic), std::end(kSessionMagic));
    PutWord(out, kSessionVersion);
    PutWord(out, static_cast<std::uint32_t>(inserts.size()));
    for (const SessionInsert& insert : inserts) {
        PutWord(out, static_cast<std::uint32_t>(insert.typeId));
        PutWord(out, static_cast<std::uint32_t>(insert.chunks.size()));
        for (const SavedChunk& chunk : insert.chunks) {
            PutWord(out, static_cast<std::uint32_t>(chunk.id));
            PutWord(out, static_cast<std::uint32_t>(chunk.bytes.size()));
            out.insert(out.end(), chunk.bytes.begin(), chunk.bytes.end());
        }
    }
    PutWord(out, Crc32(out));
    return out;
}

std::vector<SessionInsert> DecodeSession(std::span<const std::uint8_t> bytes,
                                         const std::string& source) {
    constexpr std::size_t kMagicSize = sizeof kSessionMagic;
    if (bytes.size() < kMagicSize ||
        !std::equal(std::begin(kSessionMagic), std::end(kSessionMagic), bytes.begin())) {
        throw HostError("The file " + source + " is not a Vorix session file.");
    }
    SessionReader reader(bytes, source);
    reader.Bytes(kMagicSize);
    if (const std::uint32_t version = reader.Word(); version != kSessionVersion) {
        throw HostError("The session file " + source + " has version " + std::to_string(version) +
                        "; this host reads version " + std::to_string(kSessionVersion) + ".");
    }
    // The version is read first, so that a newer file is named as such rather than as damaged.
    if (bytes.size() < kMagicSize + 12 ||
        Crc32(bytes.first(bytes.size() - 4)) != SessionReader(bytes.last(4), source).Word()) {
        reader.Damaged();
    }
    SessionReader body(bytes.first(bytes.size() - 4), source);
    body.Bytes(kMagicSize + 4);
    std::vector<SessionInsert> inserts(body.Count(8));
    for (SessionInsert& insert : inserts) {
        insert.typeId = static_cast<std::int32_t>(body.Word());
        insert.chunks.resize(body.Count(8));
        for (SavedChunk& chunk : insert.chunks) {
            chunk.id = static_cast<std::int32_t>(body.Word());
            const auto data = body.Bytes(body.Count(1));
            chunk.bytes.assign(data.begin(), data.end());
        }
    }
    if (!body.AtEnd()) body.Damaged();
    return inserts;
}

void WriteSessionFile(const std::string& path, const std::vector<SessionInsert>& inserts) {
    const std::vector<std::uint8_t> bytes = EncodeSession(inserts);
    FileReplacement replacement(path);
    {
        std::ofstream file(replacement.TemporaryPath(), std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        file.close();
        if (!file) throw HostError("The session file " + path + " could not be written.");
    }
    replacement.Commit();
}

// Read up to a little beyond the largest session and no further, so that a file far too long, or
// a device or pipe whose data never ends, is refused at once rather than read whole.
std::vector<SessionInsert> ReadSessionFile(const std::string& path) {
    int descriptor = -1;
    do {
        descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    } while (descriptor < 0 && errno == EINTR);
    if (descriptor < 0) {
        const std::string reason = std::strerror(errno);
        throw HostError("The session file " + path + " could not be opened: " + reason + ".");
    }
    const ScopeExit closing([descriptor] { close(descriptor); });
    struct stat status {};
    if (fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
        throw HostError("The session file " + path + " is a folder.");
    }
    std::vector<std::uint8_t> bytes;
    std::array<std::uint8_t, 65536> piece{};
    while (bytes.size() <= kMaxSessionFileBytes) {
        const ssize_t got = read(descriptor, piece.data(), piece.size());
        if (got == 0) return DecodeSession(bytes, path);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) {
            const std::string reason = std::strerror(errno);
            throw HostError("The session file " + path + " could not be read: " + reason + ".");
        }
        bytes.insert(bytes.end(), piece.begin(), piece.begin() + got);
    }
    throw HostError("The file " + path + " is larger than any Vorix session.");
}

}  // namespace vorix
