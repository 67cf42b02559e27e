#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "vorix-host/Insert.h"

namespace vorix {

// One insert of a session: its effect type and every chunk it saved, in its order.
struct SessionInsert {
    std::int32_t typeId = 0;
    std::vector<SavedChunk> chunks;
    friend bool operator==(const SessionInsert&, const SessionInsert&) = default;
};

// The session file of the reference host, version 1. Every number is 32 bits, high byte first:
//   "VorixSes" (8 bytes), version, insert count;
//   per insert: type id, chunk count; per chunk: chunk id, byte count, the chunk's bytes;
//   and last the CRC-32 (as zip files use it) of everything before it.
// docs/reference-host.md tells the format in full. Any thread.
inline constexpr char kSessionMagic[8] = {'V', 'o', 'r', 'i', 'x', 'S', 'e', 's'};
inline constexpr std::uint32_t kSessionVersion = 1;

// The longest session file that is read. A real one holds a few kilobytes per insert; the plug-in
// refuses a settings chunk beyond 4 MiB, so this leaves room for more than a dozen inserts of the
// largest settings. A longer file is refused unread.
inline constexpr std::size_t kMaxSessionFileBytes = 64 * 1024 * 1024;

std::vector<std::uint8_t> EncodeSession(const std::vector<SessionInsert>& inserts);
// Throws HostError, naming `source`, for anything but a whole, undamaged session of a version
// this host reads.
std::vector<SessionInsert> DecodeSession(std::span<const std::uint8_t> bytes,
                                         const std::string& source);

// Main thread. The file appears whole or not at all; throws HostError.
void WriteSessionFile(const std::string& path, const std::vector<SessionInsert>& inserts);
// Main thread. Throws HostError for a file that cannot be read or is refused.
std::vector<SessionInsert> ReadSessionFile(const std::string& path);

}  // namespace vorix
