// A plug-in file that carries the product's description with an engine of its own, so that tests
// see exactly what the host integration hands an engine: each audio call's length and bypass
// state, starting values outside the table's ranges, an announced latency, meters at several
// positions with known readings, and the reports an edit in the editor makes. Its audio adds each
// input to its output, which leaves the host's bypass copy and the connection of every channel
// visible in the output.

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <limits>

#include "core/PluginCore.h"
#include "engine/VorixParameterIds.h"
#include "host/ModuleMetaClass.h"
#include "host/ZORRtasVorixMetaClass.h"
#include "probe/ProbeCalls.h"

namespace vorix::test {
namespace {

constexpr std::size_t kLogCapacity = 64;
std::array<ProbeCall, kLogCapacity> callLog;
std::atomic<std::int32_t> callCount{0};

// Starting values the engine reports for some parameters: below, unordered, above and inside
// the table's range.
struct StartingValue {
    std::int32_t index;
    float value;
};
constexpr StartingValue kStartingValues[] = {
    {0, 5.0f}, {1, std::numeric_limits<float>::quiet_NaN()}, {3, 30000.0f}, {30, 6.0f}};

// Meters at positions 1, 0, 2, 0 with their fixed readings.
struct ProbeMeter {
    const char* name;
    std::int32_t id;
    std::int32_t position;
    float reading;
};
constexpr ProbeMeter kMeters[] = {{"Quarter", static_cast<std::int32_t>(FourCC("mQtr")), 1, 0.25f},
                                  {"Clip", static_cast<std::int32_t>(FourCC("mClp")), 0, -1.0f},
                                  {"Half", static_cast<std::int32_t>(FourCC("mHlf")), 2, 0.5f},
                                  {"Zero", static_cast<std::int32_t>(FourCC("mZro")), 0, 0.0f}};

class ProbeCore;
ProbeCore* newestCore = nullptr;

class ProbeCore : public PluginCore {
  public:
    ProbeCore(PluginPlatform* platform, const ChannelConfig& config)
        : PluginCore(platform, config), channels_(std::max(config.inputs, config.outputs)) {
        newestCore = this;
        values_.resize(static_cast<std::size_t>(MetaClass().GetParameterCount()));
        for (std::int32_t index = 0; index < MetaClass().GetParameterCount(); ++index) {
            values_[static_cast<std::size_t>(index)] =
                MetaClass().GetParameterInfo(index)->defaultValue;
        }
        for (const StartingValue& start : kStartingValues) {
            values_[static_cast<std::size_t>(start.index)] = start.value;
        }
    }

    ~ProbeCore() override {
        if (newestCore == this) newestCore = nullptr;
    }

    // What an edit in the editor does once it has changed the engine.
    void Report(std::int32_t id, float value) { ReportParameter(id, value, false); }

    Frame* CreateEditorFrame(PluginUIRoot&, Frame*) override { return nullptr; }
    Frame* CreateAboutFrame(PluginUIRoot&, Frame*) override { return nullptr; }
    EditorSize GetEditorSize() const override { return {}; }
    double GetParameter(const ZORParameterInfo* info) override {
        return values_[static_cast<std::size_t>(info->index)];
    }
    float GetMeterValue(std::int32_t meterId) override {
        for (const ProbeMeter& meter : kMeters) {
            if (meter.id == meterId) return meter.reading;
        }
        return 0.0f;
    }

  protected:
    // The session counter stands for the latency the engine announces.
    bool ApplyParameter(const ZORParameterInfo* info, float value) override {
        values_[static_cast<std::size_t>(info->index)] = value;
        if (info->id == kDirtyId) SetInitialDelay(static_cast<std::int32_t>(value));
        return false;
    }
    void ApplyParameterToEditor(const ZORParameterInfo*, float) override {}

    void ProcessAudio(float** inputs, float** outputs, std::int32_t samples,
                      std::int32_t bypassState) noexcept override {
        const std::int32_t entry = callCount.fetch_add(1, std::memory_order_relaxed);
        if (entry < static_cast<std::int32_t>(kLogCapacity)) {
            callLog[static_cast<std::size_t>(entry)] = {samples, bypassState};
        }
        for (std::int32_t c = 0; c < channels_; ++c) {
            for (std::int32_t i = 0; i < samples; ++i)
                outputs[c][i] += inputs[c][i];
        }
    }

  private:
    std::int32_t channels_;
    std::vector<float> values_;
};

// Parameters of the kinds the product's own table does not use, behind its 33.
ZORParameterInfo ExtraParameter(const char (&id)[5], std::int32_t type, float min, float max,
                                float defaultValue, float step) {
    ZORParameterInfo info;
    info.id = static_cast<std::int32_t>(FourCC(id));
    info.type = type;
    info.min = min;
    info.max = max;
    info.defaultValue = defaultValue;
    info.step = step;
    return info;
}

class ProbeMetaClass : public ZORRtasVorixMetaClass {
  public:
    ProbeMetaClass() {
        ZORParameterInfo mode = ExtraParameter("mode", kParamDiscrete, 0, 2, 1, 1);
        mode.discreteValues = {"Off;0", "Low;1", "High;2"};
        AddParameter(mode);
        AddParameter(ExtraParameter("swch", kParamOnOff, 0, 1, 1, 1));
        AddParameter(ExtraParameter("levl", kParamLevelDb, -60, 12, 0, 0.5f));
        AddParameter(ExtraParameter("cont", kParamStepByCount, 0, 10, 5, 0.5f));
        AddParameter(ExtraParameter("givn", kParamStepGiven, 0, 4, 1, 0.25f));
        AddParameter(ExtraParameter("time", kParamTimeLinear, 0, 500, 20, 1));
        AddParameter(ExtraParameter("logt", kParamTimeLog, 1, 5000, 100, 1));
        AddParameter(ExtraParameter("rato", kParamRatioLog, 1, 20, 4, 0.1f));
    }
    std::unique_ptr<PluginCore> CreateCore(PluginPlatform* platform,
                                           const ChannelConfig& config) override {
        return std::make_unique<ProbeCore>(platform, config);
    }
    void GetMeterNames(const ChannelConfig&, std::vector<ZORMeterInfo>& out) const override {
        out.clear();
        for (const ProbeMeter& meter : kMeters)
            out.push_back({meter.name, meter.id, meter.position, 0});
    }
};

}  // namespace
}  // namespace vorix::test

namespace vorix {

std::unique_ptr<ZORPluginMetaClass> MakeModuleMetaClass() {
    return std::make_unique<test::ProbeMetaClass>();
}

}  // namespace vorix

extern "C" __attribute__((visibility("default"))) std::int32_t ProbeTakeCalls(
    vorix::test::ProbeCall* calls, std::int32_t capacity) {
    using namespace vorix::test;
    const std::int32_t count = std::min<std::int32_t>(callCount.exchange(0), kLogCapacity);
    std::copy_n(callLog.begin(), std::min(count, capacity), calls);
    return count;
}

extern "C" __attribute__((visibility("default"))) void ProbeReport(std::int32_t id, float value) {
    if (vorix::test::newestCore != nullptr) vorix::test::newestCore->Report(id, value);
}
