#pragma once

#include <lilv/lilv.h>
#include <lv2/log/log.h>
#include <lv2/options/options.h>
#include <lv2/urid/urid.h>
#include <lv2/worker/worker.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vorix::test {

// Planar audio: one vector of samples per channel.
using Audio = std::vector<std::vector<float>>;

// A sine per channel, at its own frequency and phase, never exactly 0 at the start.
Audio TestSignal(int channels, int frames, double rate = 48000.0);

// The bundle as a host sees it: one lilv world per test process, loaded from LV2_PATH.
class Lv2Bundle {
  public:
    static Lv2Bundle& Get();
    LilvWorld* World() const { return world_; }
    const LilvPlugin* Plugin(const std::string& uri);
    // A node owned by the bundle, for lilv's queries.
    const LilvNode* Node(const std::string& uri);

  private:
    Lv2Bundle();
    ~Lv2Bundle();
    LilvWorld* world_;
    std::map<std::string, LilvNode*> nodes_;
};

// What the test host offers an instance.
struct Lv2HostOptions {
    bool log = true;     // the host's log
    bool worker = true;  // a worker whose work the test runs
    int maxBlockLength = 512;
};

// One plug-in instance in a small host: a value for every control port and a buffer for every
// audio port, a URID map, a log that keeps its lines, and a worker queue that takes scheduled
// work without allocating, for the test to run as a host's worker thread would.
class Lv2TestInstance {
  public:
    // Work that run() scheduled: plain bytes, as a host's worker queue holds them.
    struct Work {
        std::uint32_t size = 0;
        std::array<unsigned char, 64> bytes{};
    };

    Lv2TestInstance(int channels, double rate = 48000.0, Lv2HostOptions options = {});
    ~Lv2TestInstance();
    Lv2TestInstance(const Lv2TestInstance&) = delete;
    Lv2TestInstance& operator=(const Lv2TestInstance&) = delete;

    bool Ok() const { return instance_ != nullptr; }
    void Set(const std::string& symbol, float value) { controls_[PortIndex(symbol)] = value; }
    float Get(const std::string& symbol) const { return controls_[PortIndex(symbol)]; }

    // Runs the signal in blocks of `block` frames, the queued work after each block, as a
    // worker thread that finishes before the next cycle; `beforeBlock(n)` may act before block n.
    template <typename BeforeBlock>
    Audio Process(const Audio& input, int block, BeforeBlock beforeBlock);
    Audio Process(const Audio& input, int block) {
        return Process(input, block, [](int) {});
    }
    // One run() of `frames` frames from the audio buffers as they are.
    void RunOnce(int frames) { lilv_instance_run(instance_, static_cast<uint32_t>(frames)); }
    // The work scheduled since the last call, handed over; the worker's call on one of them.
    std::vector<Work> TakeQueuedWork();
    void DoWork(const Work& work);
    std::size_t QueuedWork() const { return queued_; }
    std::size_t WorkDone() const { return workDone_; }
    // Deactivates and activates again, as a host does after a stop.
    void Reactivate();

    // The plug-in's own state calls: every value it stores, by key; the value stored under the
    // settings key; and a restore from one settings value of the given type.
    std::map<std::string, std::string> SaveStateValues();
    std::string SaveSettingsValue();
    int RestoreSettingsValue(const std::string& value, const char* typeUri);
    // A preset as hosts load it: lilv reads it from the bundle and restores it, with its port
    // values when `ports` (as jalv does), without them as a host that ignores them.
    void LoadPreset(const std::string& uri, bool ports = true);

    // A session as a host keeps one: lilv's snapshot of the instance (its state and the values of
    // its input control ports) written out as Turtle.
    std::string SaveSession();
    // The two halves of restoring such a session, for a test to run in either order: the
    // plug-in's state through its state interface, and the port values into the ports. With
    // `digits` above 0 the values arrive as a host that keeps that many significant digits
    // writes them.
    void RestoreSessionState(const std::string& session);
    void RestoreSessionPorts(const std::string& session, int digits = 0);
    // The port values a preset or session gives, by symbol.
    std::map<std::string, float> PortValuesOf(const std::string& session);
    static std::map<std::string, float> PresetPortValues(const std::string& uri);

    const std::vector<std::string>& LogLines() const { return logLines_; }

  private:
    LV2_URID Map(const char* uri);
    LilvState* ReadSession(const std::string& session);
    static void SetPortValue(const char* symbol, void* self, const void* value, uint32_t size,
                             uint32_t type);
    void ConnectPorts();
    std::uint32_t PortIndex(const std::string& symbol) const;
    const void* Extension(const char* uri) const;

    int channels_;
    int32_t maxBlock_;
    const LilvPlugin* plugin_;
    LilvInstance* instance_ = nullptr;
    std::vector<std::string> uris_;
    LV2_URID_Map map_{};
    LV2_URID_Unmap unmap_{};
    int portDigits_ = 0;  // how a restore of port values rounds them
    LV2_Log_Log log_{};
    LV2_Worker_Schedule schedule_{};
    std::vector<LV2_Options_Option> options_;
    std::vector<LV2_Feature> featureStore_;
    std::vector<const LV2_Feature*> features_;
    std::vector<std::string> logLines_;
    std::array<Work, 64> work_{};
    std::size_t queued_ = 0;
    std::size_t workDone_ = 0;
    std::vector<float> controls_;            // one value per port; audio ports unused
    std::vector<std::vector<float>> audio_;  // inputs, then outputs
};

template <typename BeforeBlock>
Audio Lv2TestInstance::Process(const Audio& input, int block, BeforeBlock beforeBlock) {
    const int frames = static_cast<int>(input[0].size());
    Audio output(input.size(), std::vector<float>(input[0].size()));
    for (int start = 0, n = 0; start < frames; start += block, ++n) {
        const int count = std::min(block, frames - start);
        for (std::size_t c = 0; c < input.size(); ++c) {
            std::copy_n(input[c].begin() + start, count, audio_[c].begin());
        }
        beforeBlock(n);
        RunOnce(count);
        for (std::size_t c = 0; c < input.size(); ++c) {
            std::copy_n(audio_[input.size() + c].begin(), count, output[c].begin() + start);
        }
        for (const Work& work : TakeQueuedWork())
            DoWork(work);
    }
    return output;
}

}  // namespace vorix::test
