#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "framework/Exceptions.h"
#include "framework/FourCC.h"
#include "hostlib/CEffectGroup.h"
#include "hostlib/CEffectProcessAS.h"
#include "hostlib/CPlugInView.h"
#include "hostlib/CPluginControl_Discrete.h"
#include "hostlib/PluginControls.h"

namespace vorix::test {

constexpr std::int32_t Id(const char (&code)[5]) {
    return static_cast<std::int32_t>(FourCC(code));
}

// A host that writes down what the library tells it.
class RecordingHost : public IHostCallbacks {
  public:
    struct Event {
        char what;  // 'v' value changed, 't' touched, 'r' released
        std::int32_t control;
        std::int32_t value;
        friend bool operator==(const Event&, const Event&) = default;
    };
    std::vector<Event> events;

    void ControlValueChanged(IProcess&, std::int32_t control,
                             std::int32_t value) noexcept override {
        events.push_back({'v', control, value});
    }
    void ControlTouched(IProcess&, std::int32_t control) noexcept override {
        events.push_back({'t', control, 0});
    }
    void ControlReleased(IProcess&, std::int32_t control) noexcept override {
        events.push_back({'r', control, 0});
    }
};

class TestView : public CPlugInView {
  public:
    std::vector<std::string> calls;
    void GetSize(std::int32_t& width, std::int32_t& height) override { width = 585, height = 450; }
    void Draw(std::int16_t, std::int16_t, std::int16_t, std::int16_t) override {
        calls.push_back("draw");
    }
    void MouseDown(std::int16_t, std::int16_t) override { calls.push_back("click"); }
    void Idle() override { calls.push_back("idle"); }
};

// A plug-in process as an integration builds one: master bypass and three parameters, two
// meters, a chunk of its own, and a render that doubles its inputs.
class TestProcess : public CEffectProcessAS {
  public:
    static inline bool failInit = false;
    static constexpr std::int32_t kPluginChunk = Id("zorc");

    std::vector<std::int32_t> updates;
    std::string settings = "settings text";
    bool lastBypass = false;
    // What the render saw of the state the main thread changes meanwhile.
    bool sawProcessing = false;
    std::int32_t sawBypassValue = 0;
    float sideChainSample = 0.0f;
    std::unique_ptr<TestView> view;

    TestProcess() { AddChunk(kPluginChunk, "Plug-In Chunk"); }

    void EffectInit() override {
        if (failInit) VORIX_THROW(AppFrame::BadParameter);
        AddControl(
            std::make_unique<CPluginControl_OnOff>(Id("bypa"), "Master Bypass", false, false));
        DefineMasterBypassControlIndex(1);
        const ContinuousControlArgs frequency{
            .id = Id("ctaa"), .nameSet = "A: Frequency", .minimum = 16.0, .maximum = 20000.0};
        AddControl(std::make_unique<CPluginControl_LogFrequency>(frequency, ControlStepCount{999}));
        const ContinuousControlArgs gain{
            .id = Id("ctab"), .nameSet = "A: Gain", .minimum = -18.0, .maximum = 18.0};
        AddControl(std::make_unique<CPluginControl_LinearBoostCut>(gain, ControlStepSize{0.05}));
        AddControl(std::make_unique<CPluginControl_Discrete>(Id("ctac"), "Mode", 0, 3, 1, true));
        AddMeter("L Out", 1, 0);
        AddMeter("R Out", 1, 0);
    }
    void UpdateControlValueInAlgorithm(std::int32_t control) override {
        updates.push_back(control);
    }

    std::int32_t ProcessAudio(bool bypass) noexcept override {
        lastBypass = bypass;
        sawProcessing = IsProcessing();
        sawBypassValue = GetControl(1)->GetControlValue();
        const std::int32_t total = GetInputConnection(0)->sampleCount;
        for (std::int32_t c = 0; c < GetOutputCount(); ++c) {
            const float* in = GetInputConnection(c)->buffer;
            float* out = GetOutputConnection(c)->buffer;
            for (std::int32_t i = 0; out != nullptr && i < total; ++i) {
                out[i] = in != nullptr ? 2.0f * in[i] : 0.0f;
            }
            GetOutputConnection(c)->sampleCount = total;
        }
        if (const std::int32_t n = GetSideChainConnectionNum(); n != kNoSideChainConnection) {
            sideChainSample = GetInputConnection(n)->buffer[0];
        }
        return total;
    }

    void GetMeters(std::span<std::int32_t> values, std::span<bool> clipped) override {
        values[0] = 1073741824, clipped[0] = false;
        values[1] = -1, clipped[1] = true;
        SetClipIndicator();
    }

    void GetDelaySamplesLatency(std::int32_t& samples) override { samples = 68; }

    std::vector<std::int32_t> highlights;  // control, on, colour
    void SetControlHighlightInfo(std::int32_t control, std::int16_t on,
                                 std::int16_t colour) override {
        highlights.insert(highlights.end(), {control, on, colour});
    }

    std::int32_t GetChunkSize(std::int32_t id, std::int32_t& size) override {
        if (id != kPluginChunk) return CEffectProcessAS::GetChunkSize(id, size);
        size = static_cast<std::int32_t>(settings.size()) + PlugInChunk::kHeaderSize;
        return kNoErr;
    }
    std::int32_t GetChunk(std::int32_t id, PlugInChunk& chunk) override {
        if (id != kPluginChunk) return CEffectProcessAS::GetChunk(id, chunk);
        chunk.SetSize(static_cast<std::int32_t>(settings.size()) + PlugInChunk::kHeaderSize);
        std::memcpy(chunk.Payload().data(), settings.data(), settings.size());
        return kNoErr;
    }
    std::int32_t SetChunk(std::int32_t id, const PlugInChunk& chunk) override {
        if (id != kPluginChunk) return CEffectProcessAS::SetChunk(id, chunk);
        settings.assign(chunk.Payload().begin(), chunk.Payload().end());
        return kNoErr;
    }

    CPlugInView* CreateCustomPlugInView() override {
        view = std::make_unique<TestView>();
        return view.get();
    }
};

// A process with a render routine of its own and no connections.
class TestRealTimeProcess : public CEffectProcessRTAS {
  public:
    std::int32_t RenderAudio(const RenderBlock& block) noexcept override { return block.frames; }
};

inline CEffectProcess* MakeTestProcess() {
    return new TestProcess;
}
inline CEffectProcess* MakeRealTimeProcess() {
    return new TestRealTimeProcess;
}

// A group with a mono and a stereo real-time type, the stereo one copied from the mono one, and
// an offline type whose factory the test chooses.
class TestGroup : public CEffectGroup {
  public:
    static inline CEffectType::ProcessFactory offlineFactory = &MakeTestProcess;

    TestGroup() {
        SetManufacturerNameSet("Test Maker\nTM");
        SetManufacturerID(Id("TMkr"));
        SetProductNameSet("Tester\nTst", 1);
        AddGestalt(14);
    }

    void CreateEffectTypes() override {
        auto mono = std::make_unique<CEffectTypeRTAS>();
        mono->SetTypeID(Id("mnRT"));
        mono->SetNameSet("Tester 1ch\nTst1");
        mono->SetChannelConfiguration(0, 0);
        mono->SetDSPClass(Id("rt71"));
        mono->SetPlugInID(Id("Test"));
        mono->SetPlugInVersion(3);
        mono->AddGestalt(8);
        mono->SetCategory(6);
        mono->SetProcessFactory(&MakeTestProcess);
        mono->SetPageTableName("MonoPageTables");
        CEffectType& model = AddEffectType(std::move(mono));

        auto stereo = std::make_unique<CEffectTypeRTAS>();
        stereo->CopySettingsFrom(model);
        stereo->SetTypeID(Id("StRT"));
        stereo->SetNameSet("Tester 2ch\nTst2");
        stereo->SetChannelConfiguration(1, 1);
        stereo->SetPageTableName("StereoPageTables");
        AddEffectType(std::move(stereo));

        auto offline = std::make_unique<CEffectTypeAS>();
        offline->CopySettingsFrom(model);
        offline->SetTypeID(Id("StAS"));
        offline->SetChannelConfiguration(1, 1);
        offline->SetProcessFactory(offlineFactory);
        AddEffectType(std::move(offline));
    }
};

}  // namespace vorix::test
