#pragma once

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "framework/FourCC.h"
#include "probe/ProbeCalls.h"
#include "vorix-host/AudioData.h"
#include "vorix-host/FourCharacterIds.h"
#include "vorix-host/Insert.h"
#include "vorix-host/PlugInModule.h"

namespace vorix {

// How failures show the host's records.
inline void PrintTo(const RecordedError& message, std::ostream* out) {
    *out << '"' << message.first << "\" \"" << message.second << "\" \"" << message.third << "\" "
         << message.kind;
}
inline void PrintTo(const SavedChunk& chunk, std::ostream* out) {
    *out << IdText(chunk.id) << " of " << chunk.bytes.size() << " bytes";
}
inline void PrintTo(const ControlReport& report, std::ostream* out) {
    *out << "control " << report.control << " = " << report.value;
}

}  // namespace vorix

namespace vorix::test {

constexpr std::int32_t Id(const char (&code)[5]) {
    return static_cast<std::int32_t>(FourCC(code));
}

inline const std::string kModulePath = VORIX_MODULE_PATH;
inline const std::string kProbeModulePath = VORIX_PROBE_MODULE_PATH;

// A host with one plug-in file open, making inserts of its types.
class HostFixture : public ::testing::Test {
  protected:
    explicit HostFixture(const std::string& path = kModulePath) : module_(path) { module_.Open(); }

    Insert& MakeInsert(const char (&type)[5], InsertSetup setup = {}) {
        inserts_.push_back(std::make_unique<Insert>(module_.FindType(Id(type)), setup));
        return *inserts_.back();
    }

    // The payload of an insert's chunk: what follows the 56-byte header.
    static std::string PayloadOf(const SavedChunk& chunk) {
        return std::string(chunk.bytes.begin() + 56, chunk.bytes.end());
    }
    static SavedChunk ChunkOf(const std::vector<SavedChunk>& chunks, std::int32_t id) {
        for (const SavedChunk& chunk : chunks) {
            if (chunk.id == id) return chunk;
        }
        ADD_FAILURE() << "no chunk " << IdText(id);
        return {};
    }

    PlugInModule module_;
    std::vector<std::unique_ptr<Insert>> inserts_;
};

// The same host with the probe engine's plug-in file.
class ProbeFixture : public HostFixture {
  protected:
    using Calls = std::vector<std::pair<std::int32_t, std::int32_t>>;

    ProbeFixture() : HostFixture(kProbeModulePath) {}

    // The probe engine's audio calls since the last look: (samples, bypass state) each.
    Calls TakeCalls() {
        const auto take =
            reinterpret_cast<ProbeTakeCallsProc>(module_.FindEntry(kProbeTakeCallsEntry));
        std::array<ProbeCall, 16> calls{};
        const std::int32_t count = take(calls.data(), static_cast<std::int32_t>(calls.size()));
        Calls seen;
        for (std::int32_t k = 0; k < count; ++k)
            seen.emplace_back(calls[k].samples, calls[k].bypassState);
        return seen;
    }
    // Has the newest probe engine report a parameter, as an edit in its editor would.
    void EngineReports(std::int32_t id, float value) {
        reinterpret_cast<ProbeReportProc>(module_.FindEntry(kProbeReportEntry))(id, value);
    }
};

// A stereo track of 9000 samples none of which is zero, so that the engine's guard noise, far
// below the resolution of any sample, cannot show in the output.
inline AudioData TrackWithoutZeros() {
    AudioData track;
    track.channels.assign(2, std::vector<float>(9000));
    for (std::size_t i = 0; i < 9000; ++i) {
        track.channels[0][i] = 0.3f + 0.2f * static_cast<float>((i * 7919) % 101) / 101.0f;
        track.channels[1][i] = -0.4f + 0.1f * static_cast<float>((i * 104729) % 89) / 89.0f;
    }
    return track;
}

// Sets a control as a host does, from the text a user would type.
inline void SetControl(Insert& insert, const char* control, const char* text) {
    const std::int32_t number = insert.FindControl(control);
    insert.WriteControl(number, insert.ControlTextValue(number, text));
}

}  // namespace vorix::test
