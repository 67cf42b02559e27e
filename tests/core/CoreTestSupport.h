#pragma once

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <sstream>
#include <thread>
#include <tuple>

#include "core/PluginCore.h"
#include "core/PluginPlatform.h"
#include "core/RecordingErrorMessageService.h"
#include "core/SettingsTexts.h"
#include "core/ZORPluginMetaClass.h"
#include "core/ZORPluginSettingsMetaData.h"
#include "framework/FourCC.h"
#include "serialization/Archive.h"
#include "support/TestPlatform.h"

namespace vorix::test {

// Ids of the test product's parameters, at table positions 0 to 3.
inline constexpr std::int32_t kFreqId = 0;
inline constexpr std::int32_t kGainId = 1;
inline constexpr std::int32_t kTrimId = static_cast<std::int32_t>(FourCC("LGan"));
inline constexpr std::int32_t kEditorOnlyId = 7;

// What the test product looks like; a test changes it before it makes cores.
struct ProductSetup {
    std::int32_t programCount = 3;
    bool programBank = true;
    const char* factoryPrograms = nullptr;
};

// A small engine: its settings are one state word and the attributes, its audio adds 1 to the
// input, and it records what the core asks of it.
class TestCore : public PluginCore {
  public:
    TestCore(PluginPlatform* platform, const ChannelConfig& config, TickSource clock = GetTicks)
        : PluginCore(platform, config, std::move(clock)) {}
    using PluginCore::ReportParameter;

    struct Change {
        std::int32_t id;
        float value;
        std::int32_t internalDepth;
    };

    double GetParameter(const ZORParameterInfo* info) override { return info->index * 10.0; }
    Frame* CreateEditorFrame(PluginUIRoot&, Frame*) override { return nullptr; }
    Frame* CreateAboutFrame(PluginUIRoot&, Frame*) override { return nullptr; }
    EditorSize GetEditorSize() const override { return {585, 450}; }
    bool ApplyParameter(const ZORParameterInfo* info, float value) override {
        applied.push_back({info->id, value, GetInternalDepth()});
        return applyAnswer;
    }
    void ApplyParameterToEditor(const ZORParameterInfo* info, float value) override {
        editorChanges.push_back({info->id, value, GetInternalDepth()});
    }
    // Hooks log the stored value they see: the rate is stored after, the block size before.
    void WillChangeSampleRate(float) override { log.push_back(std::to_string(GetSampleRate())); }
    void DidChangeBlockSize(std::int32_t) override {
        log.push_back(std::to_string(GetBlockSize()));
    }
    void ProcessAudio(float** inputs, float** outputs, std::int32_t samples,
                      std::int32_t bypassState) noexcept override {
        if (blocks < blockStates.size()) blockStates[blocks] = bypassState;
        if (blocks < blockSizes.size()) blockSizes[blocks] = samples;
        ++blocks;
        if (gate != nullptr) entered.store(true);
        while (gate != nullptr && !gate->load())
            std::this_thread::yield();
        for (std::int32_t c = 0; c < GetChannelConfig()->outputs; ++c)
            for (std::int32_t i = 0; i < samples; ++i)
                outputs[c][i] = (inputs != nullptr ? inputs[c][i] : 0.0f) + 1.0f;
    }
    void WriteSettings(std::ostream& stream) override {
        if (frameworkSettings) return PluginCore::WriteSettings(stream);
        stream << "<!-- " << kMakerName << " probe -->\n<probe_settings>\n\t<state>" << state
               << "</state>\n\t" << FormatAttributes() << "\n</probe_settings>";
    }
    void ReadSettings(const std::string& text) override {
        readTexts.push_back(text);
        readDepths.push_back(GetInternalDepth());
        if (frameworkSettings) return PluginCore::ReadSettings(text);
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            if (line.find("<state>") != std::string::npos) state = GetLineElementText(line);
            if (line.find(kAttributesOpening) != std::string::npos) ParseAttributes(line);
        }
    }

    std::string state = "initial";
    bool applyAnswer = true;
    bool frameworkSettings = false;  // the core's own archive form instead of the state line
    std::vector<Change> applied, editorChanges;
    std::vector<std::string> log, readTexts;
    std::vector<std::int32_t> readDepths;
    std::int32_t extraValue = 0;  // what the archive form's hooks write and read
    std::unique_ptr<ZORPluginSettingsMetaData> readMetadata;
    // Recorded by the audio call without allocating.
    std::array<std::int32_t, 64> blockStates{}, blockSizes{};
    std::size_t blocks = 0;
    // While set, the audio call announces itself through `entered` and waits for the gate.
    std::atomic<bool>* gate = nullptr;
    std::atomic<bool> entered{false};

  protected:
    void WriteExtraSettings(Serialization::Archive& archive) override {
        archive.WriteInt("extra", extraValue);
    }
    void ReadExtraSettings(Serialization::Archive& archive,
                           ZORPluginSettingsMetaData& metadata) override {
        extraValue = archive.ReadInt("extra");
        readMetadata = std::make_unique<ZORPluginSettingsMetaData>(metadata);
    }
};

// The product behind the cores of a test.
class TestMetaClass : public ZORPluginMetaClass {
  public:
    explicit TestMetaClass(ProductSetup setup) : setup_(std::move(setup)) {
        // clang-format off
        for (const auto& [id, min, max] : {std::tuple{kFreqId, 16.0f, 20000.0f},
                 {kGainId, -18.0f, 18.0f}, {kTrimId, -24.0f, 24.0f}, {kEditorOnlyId, 0.0f, 1.0f}}) {
            // clang-format on
            ZORParameterInfo info;
            std::tie(info.id, info.min, info.max) = std::tie(id, min, max);
            info.flags = id == kEditorOnlyId ? kParamFlagEditorOnly : 0;
            AddParameter(info);
        }
    }
    std::unique_ptr<PluginCore> CreateCore(PluginPlatform* platform,
                                           const ChannelConfig& config) override {
        return std::make_unique<TestCore>(platform, config);
    }
    std::string GetProductName() const override { return "Probe"; }
    std::string GetProductFileName() const override { return "Probe"; }
    std::string GetVersion() const override { return "1.0"; }
    std::string GetCopyright() const override { return "(c) Zorvane Sound Works"; }
    void GetChannelConfigs(std::vector<ChannelConfig>& out) const override { out = {{2, 2}}; }
    const char* GetFactoryPrograms() const override { return setup_.factoryPrograms; }
    bool HasProgramBank() const override { return setup_.programBank; }
    std::int32_t GetProgramCount() const override { return setup_.programCount; }

  private:
    ProductSetup setup_;
};

// Makes cores of the test product on a clock of the test's own, and checks that every core is
// gone, with the product, at the end.
class CoreTest : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(GetMetaClass(), nullptr) << "a core outlived its test"; }
    void TearDown() override {
        EXPECT_EQ(GetMetaClass(), nullptr) << "a core still holds the product";
        SetMetaClassMaker(nullptr);
    }
    std::unique_ptr<TestCore> MakeCore(ChannelConfig config = {2, 2}) {
        SetMetaClassMaker([product = setup] { return std::make_unique<TestMetaClass>(product); });
        return std::make_unique<TestCore>(&platform, config, [this] { return ticks.load(); });
    }
    const std::vector<RecordedError>& Messages() const { return platform.messages.Messages(); }
    // The settings text that the test engine writes for `state`.
    static std::string SettingsFor(const std::string& state) {
        return "<!-- Zorvane Sound Works probe -->\n<probe_settings>\n\t<state>" + state +
               "</state>\n\t<attributes></attributes>\n</probe_settings>\n";
    }
    // A program document of the test product: its header, then `blocks`.
    std::string Document(const std::string& blocks) const {
        return kProgramHeaderStart + std::string("Probe") + kProgramHeaderEnd + "\n" + blocks;
    }

    ProductSetup setup;
    TestPlatform platform;
    std::atomic<Ticks> ticks{0};
};

// The settings message with `second` as its detail line.
inline RecordedError SettingsMessage(const char* second) {
    return {kUnableToLoadSettings, second, "", kSettingsErrorKind};
}

}  // namespace vorix::test
