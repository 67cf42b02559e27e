#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <thread>
#include <vector>

#include "ProcessTestSupport.h"
#include "hostlib/BigEndian.h"
#include "hostlib/PlugInEntryPoints.h"
#include "support/AllocationHook.h"

namespace vorix {
namespace {

using test::Id;
using test::RecordingHost;
using test::TestProcess;
using Bytes = std::vector<std::uint8_t>;

constexpr std::int32_t kControlsState = CEffectProcess::kControlsStateChunkId;

class ProcessTest : public ::testing::Test {
  protected:
    void SetUp() override {
        TestProcess::failInit = false;
        test::TestGroup::offlineFactory = &test::MakeTestProcess;
        ASSERT_EQ(group_.Initialize(), kNoErr);
    }
    void TearDown() override {
        for (IProcess* process : processes_)
            process->Release();
    }

    // A new process of a type position, through the host's entries.
    IProcess& Insert(std::int32_t type = 0) {
        IProcess* process = nullptr;
        EXPECT_EQ(group_.GetEffectType(type)->NewProcess({48000, true, &host_}, process), kNoErr);
        processes_.push_back(process);
        return *process;
    }
    static TestProcess& Plugin(IProcess& process) { return dynamic_cast<TestProcess&>(process); }

    static Bytes Save(IProcess& process, std::int32_t id) {
        std::int32_t size = 0;
        EXPECT_EQ(process.MeasureChunk(id, size), kNoErr);
        Bytes bytes(static_cast<std::size_t>(size));
        EXPECT_EQ(process.SaveChunk(id, bytes.data(), size, size), kNoErr);
        return bytes;
    }
    static std::int32_t Load(IProcess& process, std::int32_t id, const Bytes& bytes) {
        return process.LoadChunk(id, bytes.data(), static_cast<std::int32_t>(bytes.size()));
    }
    static std::int32_t Value(IProcess& process, std::int32_t control) {
        std::int32_t value = 0;
        EXPECT_EQ(process.ReadControlValue(control, value), kNoErr);
        return value;
    }

    test::TestGroup group_;
    RecordingHost host_;
    std::vector<IProcess*> processes_;
};

TEST_F(ProcessTest, GroupListsItsTypesWithCopiedSettings) {
    EXPECT_STREQ(group_.GetManufacturerNameSet(), "Test Maker\nTM");
    EXPECT_EQ(group_.GetManufacturerID(), Id("TMkr"));
    EXPECT_TRUE(group_.HasGestalt(14));
    ASSERT_EQ(group_.CountEffectTypes(), 3);
    EXPECT_EQ(group_.GetEffectType(3), nullptr);
    IProcessType& stereo = *group_.GetEffectType(1);
    EXPECT_EQ(stereo.GetTypeID(), Id("StRT"));
    EXPECT_STREQ(stereo.GetNameSet(), "Tester 2ch\nTst2");
    std::int32_t inputs = 0, outputs = 0;
    stereo.GetChannelCounts(inputs, outputs);
    EXPECT_EQ(inputs * 10 + outputs, 22);
    const IProcessType2& details = stereo.GetDetails();
    EXPECT_EQ(details.GetPlugInID(), Id("Test"));
    EXPECT_EQ(details.GetPlugInVersion(), 3);
    EXPECT_TRUE(details.HasGestalt(8));
    EXPECT_EQ(details.GetCategory(), 6);
    EXPECT_EQ(details.GetDSPClass(), Id("rt71"));
    EXPECT_STREQ(details.GetPageTableName(), "StereoPageTables");
    EXPECT_STREQ(group_.GetEffectType(0)->GetDetails().GetPageTableName(), "MonoPageTables");
    EXPECT_TRUE(stereo.IsRealTime());
    EXPECT_FALSE(group_.GetEffectType(2)->IsRealTime());
}

TEST_F(ProcessTest, NewProcessIsConnectedInitialisedAndCounted) {
    IProcess& process = Insert(1);
    std::int32_t inputs = 0, outputs = 0;
    process.GetChannelCounts(inputs, outputs);
    EXPECT_EQ(inputs * 10 + outputs, 22);
    EXPECT_EQ(Plugin(process).GetSampleRate(), 48000);
    EXPECT_EQ(process.CountControls(), 4);
    EXPECT_EQ(process.MasterBypassControl(), 1);
    EXPECT_EQ(Value(process, 3), FractionToControlValue(0.5));  // 0 dB, its default
    EXPECT_EQ(group_.CountProcesses(), 1);
    processes_.pop_back();
    process.Release();
    EXPECT_EQ(group_.CountProcesses(), 0);
}

TEST_F(ProcessTest, AFailedInsertLeavesNothingBehind) {
    IProcess* process = reinterpret_cast<IProcess*>(this);
    TestProcess::failInit = true;
    EXPECT_EQ(group_.GetEffectType(0)->NewProcess({}, process), kErrInitFailed);
    EXPECT_EQ(process, nullptr);
    TestProcess::failInit = false;
    // An offline type cannot drive a process that only has a render routine of its own.
    test::TestGroup::offlineFactory = &test::MakeRealTimeProcess;
    test::TestGroup other;
    ASSERT_EQ(other.Initialize(), kNoErr);
    EXPECT_EQ(other.GetEffectType(2)->NewProcess({}, process), kErrInitFailed);
    EXPECT_EQ(group_.CountProcesses() + other.CountProcesses(), 0);
}

TEST_F(ProcessTest, HostWritesUpdateTheAlgorithmWithoutAReport) {
    IProcess& process = Insert();
    ASSERT_EQ(process.FindControl(Id("ctab")), 3);
    EXPECT_EQ(process.FindControl(Id("none")), CProcess::kNoControl);
    EXPECT_EQ(process.WriteControlValue(3, 12345), kNoErr);
    EXPECT_EQ(Value(process, 3), 12345);
    EXPECT_EQ(Plugin(process).updates, std::vector<std::int32_t>{3});
    EXPECT_TRUE(host_.events.empty());
    std::int32_t value = 0;
    EXPECT_EQ(process.WriteControlValue(5, 0), kErrBadIndex);
    EXPECT_EQ(process.ReadControlValue(0, value), kErrBadIndex);
}

TEST_F(ProcessTest, PluginChangesAndTouchesReachTheHost) {
    IProcess& process = Insert();
    TestProcess& plugin = Plugin(process);
    plugin.TouchControl(2);
    plugin.SetControlValue(2, 777);
    plugin.ReleaseControl(2);
    const std::vector<RecordingHost::Event> expected = {{'t', 2, 0}, {'v', 2, 777}, {'r', 2, 0}};
    EXPECT_EQ(host_.events, expected);
    EXPECT_EQ(plugin.updates, std::vector<std::int32_t>{2});
    EXPECT_THROW(plugin.SetControlValue(9, 0), AppFrame::BadParameter);
}

TEST_F(ProcessTest, ControlDescriptionsAndTextsForTheHost) {
    IProcess& process = Insert();
    ControlDescription description;
    ASSERT_EQ(process.DescribeControl(2, description), kNoErr);
    EXPECT_EQ(description.id, Id("ctaa"));
    EXPECT_EQ(description.numSteps, 999);
    EXPECT_TRUE(description.continuous && description.automatable);
    char text[16];
    ASSERT_EQ(process.ControlValueText(2, kControlValueTop, text, sizeof text), kNoErr);
    EXPECT_STREQ(text, "20.0 kHz");
    std::int32_t value = 0;
    EXPECT_EQ(process.ControlTextValue(2, "20k", value), kNoErr);
    EXPECT_EQ(value, kControlValueTop);
    EXPECT_EQ(process.ControlTextValue(2, "loud", value), kErrBadText);
    EXPECT_EQ(process.ControlTextValue(2, nullptr, value), kErrBadArgument);
    ASSERT_EQ(process.ControlName(1, text, 4), kNoErr);
    EXPECT_STREQ(text, "Mas");
}

TEST_F(ProcessTest, ControlStateRoundTripsToAnotherInsertButTheBypass) {
    IProcess& source = Insert();
    IProcess& target = Insert();
    for (std::int32_t control = 1; control <= 4; ++control) {
        source.WriteControlValue(control, -1000 * control);
    }
    const Bytes chunk = Save(source, kControlsState);
    ASSERT_EQ(Load(target, kControlsState, chunk), kNoErr);
    EXPECT_EQ(Value(target, 1), kControlValueBottom);  // bypass left alone
    for (std::int32_t control = 2; control <= 4; ++control) {
        EXPECT_EQ(Value(target, control), -1000 * control);
    }
    // The restore is the plug-in's own change: the algorithm and the host both hear of it.
    EXPECT_EQ(Plugin(target).updates, (std::vector<std::int32_t>{2, 3, 4}));
    EXPECT_EQ(host_.events.size(), 3u);
}

TEST_F(ProcessTest, ControlStateItemsAreTaggedByKindInControlOrder) {
    IProcess& process = Insert();
    const Bytes chunk = Save(process, kControlsState);
    ASSERT_EQ(LoadBigEndian32(chunk.data()), chunk.size());
    const std::string payload(chunk.begin() + PlugInChunk::kHeaderSize, chunk.end());
    EXPECT_EQ(payload.substr(0, 6), std::string("\1\1\1\1l_", 6));
    const auto at = [&](const char* item) { return payload.find(item); };
    EXPECT_LT(at("l_bypa"), at("d_ctaa"));
    EXPECT_LT(at("d_ctaa"), at("d_ctab"));
    EXPECT_LT(at("d_ctab"), at("l_ctac"));
    EXPECT_NE(at("l_ctac"), std::string::npos);
}

TEST_F(ProcessTest, HostileControlStateChangesNoControl) {
    IProcess& process = Insert();
    process.WriteControlValue(2, 42);
    Bytes good = Save(Insert(), kControlsState);
    Bytes badMarker = good;
    badMarker[PlugInChunk::kHeaderSize] = 0;
    Bytes oversized = good;
    StoreBigEndian32(oversized.data(), static_cast<std::uint32_t>(good.size() + 100));
    Bytes wrongId = good;
    StoreBigEndian32(wrongId.data() + 20, static_cast<std::uint32_t>(Id("zorc")));
    const Bytes truncated(good.begin(), good.end() - 3);
    const Bytes headerOnly(good.begin(), good.begin() + 40);
    for (const Bytes* bytes : std::initializer_list<const Bytes*>{&badMarker, &oversized, &wrongId,
                                                                  &truncated, &headerOnly}) {
        EXPECT_EQ(Load(process, kControlsState, *bytes), kErrBadChunk);
    }
    EXPECT_EQ(process.LoadChunk(kControlsState, nullptr, 100), kErrBadChunk);
    EXPECT_EQ(Load(process, Id("what"), good), kErrUnknownChunk);
    EXPECT_EQ(Value(process, 2), 42);
}

// A state written by another writer: kinds the library does not write, values that are not whole
// control values, items for controls that do not exist and none for one that does.
TEST_F(ProcessTest, ForeignControlStateItemsAreRoundedClampedOrSkipped) {
    IProcess& process = Insert();
    process.WriteControlValue(4, 555);
    ChunkDataParser writer;
    writer.AddFloat("ctaa", 1e12f);
    writer.AddDouble("ctab", std::nan(""));
    writer.AddShort("bypa", 1);
    writer.AddLong("zzzz", 9);
    PlugInChunk chunk;
    chunk.SetSize(static_cast<std::int32_t>(writer.GetChunkDataSize()) + PlugInChunk::kHeaderSize);
    writer.WriteChunkData(chunk.Payload());
    chunk.SetIdentity({0, 0, 0, kControlsState, "state"});
    const Bytes bytes(chunk.Bytes().begin(), chunk.Bytes().end());
    const std::int32_t gainBefore = Value(process, 3);
    ASSERT_EQ(Load(process, kControlsState, bytes), kNoErr);
    EXPECT_EQ(Value(process, 2), kControlValueTop);
    EXPECT_EQ(Value(process, 3), gainBefore);
    EXPECT_EQ(Value(process, 1), kControlValueBottom);
    EXPECT_EQ(Value(process, 4), 555);
}

TEST_F(ProcessTest, ControlsAreUniqueAndStartAtTheirDefault) {
    TestProcess& plugin = Plugin(Insert());
    EXPECT_THROW(
        plugin.AddControl(std::make_unique<CPluginControl_OnOff>(Id("ctab"), "x", false, true)),
        AppFrame::DuplicateEntry);
    const std::int32_t added = plugin.AddControl(
        std::make_unique<CPluginControl_Discrete>(Id("ctzz"), "x", 0, 4, 4, true));
    EXPECT_EQ(added, 5);
    EXPECT_EQ(plugin.GetControlValue(added), kControlValueTop);
}

TEST_F(ProcessTest, HighlightsReachThePluginWithTheirColour) {
    IProcess& process = Insert();
    EXPECT_EQ(process.HighlightControl(3, true, 2), kNoErr);
    EXPECT_EQ(process.HighlightControl(2, false, 100000), kNoErr);
    EXPECT_EQ(process.HighlightControl(5, true, 1), kErrBadIndex);
    EXPECT_EQ(Plugin(process).highlights, (std::vector<std::int32_t>{3, 1, 2, 2, 0, 32767}));
}

TEST_F(ProcessTest, ChunksListThePluginsOwnBeforeTheControlState) {
    IProcess& process = Insert(1);
    ASSERT_EQ(process.CountChunks(), 2);
    std::int32_t first = 0, second = 0;
    process.ChunkIdAt(0, first);
    process.ChunkIdAt(1, second);
    EXPECT_EQ(first, TestProcess::kPluginChunk);
    EXPECT_EQ(second, kControlsState);
    EXPECT_EQ(process.ChunkIdAt(2, first), kErrBadIndex);
    EXPECT_THROW(Plugin(process).AddChunk(kControlsState, "again"), AppFrame::DuplicateEntry);
}

TEST_F(ProcessTest, SavedChunkCarriesTheLibrarysHeader) {
    IProcess& process = Insert(1);
    const Bytes bytes = Save(process, TestProcess::kPluginChunk);
    const PlugInChunk chunk = PlugInChunk::FromBytes(bytes);
    EXPECT_EQ(chunk.GetSize(), 56 + 13);
    EXPECT_EQ(LoadBigEndian32(bytes.data() + 4), 1u);  // header version
    EXPECT_EQ(LoadBigEndian32(bytes.data() + 8), static_cast<std::uint32_t>(Id("TMkr")));
    EXPECT_EQ(LoadBigEndian32(bytes.data() + 12), static_cast<std::uint32_t>(Id("Test")));
    EXPECT_EQ(chunk.GetPlugInId(), Id("StRT"));
    EXPECT_EQ(chunk.GetChunkId(), TestProcess::kPluginChunk);
    EXPECT_EQ(chunk.GetName(), "Plug-In Chunk");
    IProcess& other = Insert(1);
    ASSERT_EQ(Load(other, TestProcess::kPluginChunk, bytes), kNoErr);
    EXPECT_EQ(Plugin(other).settings, "settings text");
}

TEST_F(ProcessTest, TooSmallABufferIsToldTheSizeNeeded) {
    IProcess& process = Insert();
    std::uint8_t buffer[10];
    std::int32_t size = 0;
    EXPECT_EQ(process.SaveChunk(TestProcess::kPluginChunk, buffer, 10, size), kErrBufferTooSmall);
    EXPECT_EQ(size, 69);
    EXPECT_EQ(process.SaveChunk(Id("what"), buffer, 10, size), kErrUnknownChunk);
    EXPECT_EQ(process.SaveChunk(kControlsState, nullptr, 10, size), kErrBadArgument);
}

TEST_F(ProcessTest, RenderFillsTheConnectionsAndAllocatesNothing) {
    IProcess& process = Insert(1);
    std::array<float, 8> left{1, 2, 3, 4, 5, 6, 7, 8}, right{}, outLeft{}, outRight{};
    float key = 0.5f;
    float* inputs[] = {left.data(), right.data()};
    float* outputs[] = {outLeft.data(), outRight.data()};
    const RenderBlock block{inputs, 2, outputs, 2, &key, 8, true};
    std::int32_t rendered = 0;
    {
        test::AllocationCounter allocations;
        rendered = process.GetRenderInterface().Render(block);
        if (test::AllocationCounter::Available()) {
            EXPECT_EQ(allocations.Count(), 0u);
        }
    }
    EXPECT_EQ(rendered, 8);
    EXPECT_EQ(outLeft[7], 16.0f);
    TestProcess& plugin = Plugin(process);
    EXPECT_TRUE(plugin.lastBypass);
    EXPECT_EQ(plugin.sideChainSample, 0.5f);
    EXPECT_EQ(plugin.GetSideChainConnectionNum(), 2);
    EXPECT_EQ(plugin.GetOutputConnection(1)->sampleCount, 8);
    EXPECT_EQ(plugin.GetInputConnection(9), nullptr);
}

TEST_F(ProcessTest, MalformedBlocksAreRefusedBeforeTheRender) {
    IProcess& process = Insert();
    float* none[1] = {nullptr};
    IProcess2& render = process.GetRenderInterface();
    EXPECT_EQ(render.Render({none, 1, none, 1, nullptr, -1, false}), kErrBadArgument);
    EXPECT_EQ(render.Render({none, 10, none, 1, nullptr, 4, false}), kErrBadArgument);
    EXPECT_EQ(render.Render({nullptr, 1, none, 1, nullptr, 4, false}), kErrBadArgument);
    // An unconnected input is silence, and no side chain means none.
    float out[4] = {9, 9, 9, 9};
    float* outputs[] = {out};
    EXPECT_EQ(render.Render({none, 1, outputs, 1, nullptr, 4, false}), 4);
    EXPECT_EQ(out[3], 0.0f);
    EXPECT_EQ(Plugin(process).GetSideChainConnectionNum(),
              CEffectProcessAS::kNoSideChainConnection);
}

TEST_F(ProcessTest, RealTimeProcessRendersDirectly) {
    test::TestGroup::offlineFactory = &test::MakeRealTimeProcess;
    test::TestGroup group;
    ASSERT_EQ(group.Initialize(), kNoErr);
    auto rtas = std::make_unique<CEffectTypeRTAS>();
    rtas->CopySettingsFrom(dynamic_cast<CEffectType&>(*group.GetEffectType(2)));
    CEffectType& type = group.AddEffectType(std::move(rtas));
    IProcess* process = nullptr;
    ASSERT_EQ(type.NewProcess({}, process), kNoErr);
    EXPECT_EQ(process->GetRenderInterface().Render({nullptr, 0, nullptr, 0, nullptr, 32, false}),
              32);
    process->Release();
}

TEST_F(ProcessTest, MetersLatencyAndProcessingState) {
    IProcess& process = Insert(1);
    ASSERT_EQ(process.CountMeters(), 2);
    char name[8];
    process.MeterName(1, name, sizeof name);
    EXPECT_STREQ(name, "R Out");
    std::int32_t values[2];
    bool clipped[2];
    EXPECT_EQ(process.ReadMeters(values, clipped, 1), kErrBadArgument);
    ASSERT_EQ(process.ReadMeters(values, clipped, 2), kNoErr);
    EXPECT_EQ(values[0], 1073741824);
    EXPECT_TRUE(clipped[1] && process.IsClipIndicatorSet());
    process.ClearClipIndicators();
    EXPECT_FALSE(process.IsClipIndicatorSet());
    std::int32_t latency = 0;
    EXPECT_EQ(process.ReadLatency(latency), kNoErr);
    EXPECT_EQ(latency, 68);
    process.StartProcessing();
    EXPECT_TRUE(Plugin(process).IsProcessing());
    process.StopProcessing();
    EXPECT_FALSE(Plugin(process).IsProcessing());
}

TEST_F(ProcessTest, TheViewOpensOnTheFirstWindow) {
    IProcess& process = Insert();
    std::int32_t width = 0, height = 0;
    EXPECT_EQ(process.ViewSize(width, height), kErrNoView);
    int window = 0;
    ASSERT_EQ(process.AttachWindow(&window), kNoErr);
    ASSERT_EQ(process.ViewSize(width, height), kNoErr);
    EXPECT_EQ(width * 1000 + height, 585450);
    process.DrawView(0, 0, 10, 10);
    process.IdleView();
    process.ClickView(3, 4);
    process.AttachWindow(nullptr);
    process.AttachWindow(&window);  // the same view again
    EXPECT_EQ(Plugin(process).view->calls, (std::vector<std::string>{"draw", "idle", "click"}));
    EXPECT_EQ(Plugin(process).GetViewPort(), &window);
}

// The render thread and the main thread side by side, as a host runs them. The render reads the
// processing state and a control value that the main thread changes; the sanitizer build checks
// that these are safe to share.
TEST_F(ProcessTest, RenderRunsBesideMainThreadCalls) {
    IProcess& process = Insert(1);
    std::atomic<bool> stop{false};
    std::atomic<int> blocks{0};
    std::thread render([&] {
        std::array<float, 64> in{}, out{};
        float* inputs[] = {in.data(), in.data()};
        float* outputs[] = {out.data(), out.data()};
        while (!stop.load()) {
            process.GetRenderInterface().Render({inputs, 2, outputs, 2, nullptr, 64});
            ++blocks;
        }
    });
    // Both sides run for a while at the same time, without a sleep.
    while (blocks.load() == 0)
        std::this_thread::yield();
    std::int32_t values[2];
    bool clipped[2];
    for (std::int32_t i = 0; i < 2000 || blocks.load() < 100; ++i) {
        process.WriteControlValue(1, i);
        i % 2 == 0 ? process.StartProcessing() : process.StopProcessing();
        process.ReadMeters(values, clipped, 2);
        process.ClearClipIndicators();
    }
    stop = true;
    render.join();
    process.StopProcessing();
    EXPECT_FALSE(Plugin(process).IsProcessing());
}

class FailingGroup : public CEffectGroup {
  public:
    bool outOfMemory = false;
    void CreateEffectTypes() override {
        if (outOfMemory) throw std::bad_alloc();
        VORIX_THROW(AppFrame::BadParameter);
    }
};

TEST(ProcessGroup, InitializeAnswersWhyTheTypesCouldNotBeMade) {
    FailingGroup group;
    EXPECT_EQ(group.Initialize(), kErrInitFailed);
    group.outOfMemory = true;
    EXPECT_EQ(group.Initialize() & 0xFFFF, 58533);
}

TEST(PlugInEntryPoints, TheInstalledGroupIsTheDispatchOfItsProtocolVersion) {
    EXPECT_EQ(GetRoutineDescriptor(kHostProtocolVersion), nullptr);
    InstallPlugInGroup(std::make_unique<test::TestGroup>());
    CProcessGroupInterface* group = GetInstalledPlugInGroup();
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->Initialize(), kNoErr);
    EXPECT_EQ(GetRoutineDescriptor(kHostProtocolVersion), group);
    EXPECT_EQ(GetRoutineDescriptor(kHostProtocolVersion + 1), nullptr);
    // A process the host never released goes with the group.
    IProcess* process = nullptr;
    ASSERT_EQ(group->GetEffectType(0)->NewProcess({}, process), kNoErr);
    // A second group replaces the first, which goes with its process (the leak checker watches).
    InstallPlugInGroup(std::make_unique<test::TestGroup>());
    EXPECT_NE(GetInstalledPlugInGroup(), group);
    DestroyPlugInGroup();
    EXPECT_EQ(GetInstalledPlugInGroup(), nullptr);
}

TEST(PlugInEntryPoints, ResourceFileIsKeptUntilReleased) {
    RegisterResourceFile("/plugins/Vorix.so.rsr");
    EXPECT_EQ(GetResourceFile(), "/plugins/Vorix.so.rsr");
    ReleaseResourceFile();
    EXPECT_EQ(GetResourceFile(), "");
}

}  // namespace
}  // namespace vorix
