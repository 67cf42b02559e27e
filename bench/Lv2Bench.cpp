// What a stereo LV2 equalizer costs per frame in a host: Vorix with ten Parametric filters, run
// through lilv exactly as a host runs it, beside other LV2 equalizers of the distribution set up
// with about as many bands. 48 kHz, blocks of 512 frames. An equalizer that is not installed is
// skipped with a note. At the end, the peer row: Vorix against the fastest other equalizer of the
// same run, in processor time per frame (the figure that other work on the machine disturbs
// least).
#include <benchmark/benchmark.h>
#include <lilv/lilv.h>
#include <lv2/atom/atom.h>
#include <lv2/buf-size/buf-size.h>
#include <lv2/core/lv2.h>
#include <lv2/options/options.h>
#include <lv2/urid/urid.h>
#include <lv2/worker/worker.h>

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <map>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

#include "lv2/Lv2Names.h"

namespace vorix {
namespace {

constexpr double kRate = 48000.0;
constexpr int kBlock = 512;
// Room for any port's buffer: audio blocks, and atom sequences that stay empty.
constexpr std::size_t kPortFloats = 8192;

// One equalizer as benchmarked: its plug-in, an optional preset, and the controls set by symbol.
struct Equalizer {
    const char* label;
    const char* package;  // the Debian package that installs it
    std::string uri;
    std::string preset;
    std::vector<std::pair<std::string, float>> controls;
};

// Gains alternate between boost and cut, so that no band is the identity.
std::vector<std::pair<std::string, float>> Bands(int count, const std::string& prefix,
                                                 const std::string& suffix, float boost, float cut,
                                                 int first = 0) {
    std::vector<std::pair<std::string, float>> controls;
    for (int n = 0; n < count; ++n) {
        controls.emplace_back(prefix + std::to_string(n + first) + suffix, n % 2 ? cut : boost);
    }
    return controls;
}

std::vector<std::pair<std::string, float>> Joined(
    std::vector<std::vector<std::pair<std::string, float>>> parts) {
    std::vector<std::pair<std::string, float>> all;
    for (auto& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

std::vector<Equalizer> Equalizers() {
    return {
        // The "10-Band ISO" program: ten Parametric filters on both channels, bound to the ten
        // automation slots, whose gains the ports then set.
        {"Vorix", "", kLv2StereoPluginUri, Lv2PresetUri(2, 2),
         Bands(10, "prmControl_", "_Gain", 4.0f, -4.0f)},
        // Four parametric sections, two shelves, high and low pass: its whole chain.
        {"x42 fil4", "x42-plugins", "http://gareus.org/oss/lv2/fil4#stereo", "",
         Joined({Bands(4, "gain", "", 4.0f, -4.0f, 1),
                 {{"LSgain", 4.0f}, {"HSgain", -4.0f}, {"HighPass", 1.0f}, {"LowPass", 1.0f}}})},
        // Ten bell filters of sixteen.
        {"LSP Parametric x16", "lsp-plugins-lv2",
         "http://lsp-plug.in/plugins/lv2/para_equalizer_x16_stereo", "",
         Joined({Bands(10, "ft_", "", 1.0f, 1.0f), Bands(10, "g_", "", 1.585f, 0.631f),
                 Bands(10, "q_", "", 1.0f, 1.0f)})},
        // Eight parametric bands and two shelves.
        {"Calf Equalizer 12", "calf-plugins", "http://calf.sourceforge.net/plugins/Equalizer12Band",
         "",
         Joined({Bands(8, "p", "_active", 1.0f, 1.0f, 1),
                 Bands(8, "p", "_level", 1.585f, 0.631f, 1),
                 {{"ls_active", 1.0f},
                  {"ls_level", 1.585f},
                  {"hs_active", 1.0f},
                  {"hs_level", 0.631f}}})},
        // Ten bands of their default types.
        {"EQ10Q", "eq10q", "http://eq10q.sourceforge.net/eq/eq10qs", "",
         Joined({Bands(10, "filter", "_enable", 1.0f, 1.0f, 1),
                 Bands(10, "filter", "_gain", 4.0f, -4.0f, 1)})},
    };
}

// The installed plug-ins and the Vorix bundle of this build, loaded once.
LilvWorld* World() {
    static LilvWorld* world = [] {
        LilvWorld* w = lilv_world_new();
        lilv_world_load_all(w);
        LilvNode* bundle = lilv_new_file_uri(w, nullptr, VORIX_LV2_BUNDLE_DIR);
        lilv_world_load_bundle(w, bundle);
        lilv_node_free(bundle);
        return w;
    }();
    return world;
}

// A host for one instance: URIDs, the block-length options, a worker that runs the scheduled
// work between blocks, and a buffer for every port.
class BenchHost {
  public:
    explicit BenchHost(const Equalizer& eq) {
        LilvNode* uri = lilv_new_uri(World(), eq.uri.c_str());
        plugin_ = lilv_plugins_get_by_uri(lilv_world_get_all_plugins(World()), uri);
        lilv_node_free(uri);
        if (plugin_ == nullptr) return;
        SetUpFeatures();
        instance_ = lilv_plugin_instantiate(plugin_, kRate, features_.data());
        if (instance_ == nullptr) return;
        worker_ = static_cast<const LV2_Worker_Interface*>(
            lilv_instance_get_extension_data(instance_, LV2_WORKER__interface));
        ConnectPorts();
        for (const auto& [symbol, value] : eq.controls)
            Set(symbol, value);
        lilv_instance_activate(instance_);
        if (!eq.preset.empty()) LoadPreset(eq.preset);
    }
    ~BenchHost() {
        if (instance_ == nullptr) return;
        lilv_instance_deactivate(instance_);
        lilv_instance_free(instance_);
    }
    BenchHost(const BenchHost&) = delete;
    BenchHost& operator=(const BenchHost&) = delete;

    bool Ok() const { return instance_ != nullptr; }

    void Run() {
        lilv_instance_run(instance_, kBlock);
        for (std::size_t i = 0; i < queued_ && worker_ != nullptr; ++i) {
            worker_->work(lilv_instance_get_handle(instance_), nullptr, nullptr, work_[i].size,
                          work_[i].bytes.data());
        }
        queued_ = 0;
        ResetAtomPorts();
    }
    const float* Output() const { return buffers_[outputPort_].data(); }

  private:
    struct Work {
        uint32_t size = 0;
        std::array<unsigned char, 64> bytes{};
    };

    LV2_URID Map(const char* uri) {
        auto [it, added] = urids_.try_emplace(uri, static_cast<LV2_URID>(urids_.size() + 1));
        return it->second;
    }

    void SetUpFeatures() {
        map_ = {this, [](LV2_URID_Map_Handle h, const char* uri) {
                    return static_cast<BenchHost*>(h)->Map(uri);
                }};
        schedule_ = {this, [](LV2_Worker_Schedule_Handle h, uint32_t size, const void* data) {
                         auto* self = static_cast<BenchHost*>(h);
                         if (self->queued_ == self->work_.size() || size > 64) {
                             return LV2_WORKER_ERR_NO_SPACE;
                         }
                         self->work_[self->queued_].size = size;
                         std::memcpy(self->work_[self->queued_++].bytes.data(), data, size);
                         return LV2_WORKER_SUCCESS;
                     }};
        const LV2_URID intType = Map(LV2_ATOM__Int);
        options_ = {
            {LV2_OPTIONS_INSTANCE, 0, Map(LV2_BUF_SIZE__maxBlockLength), sizeof kBlockValue,
             intType, &kBlockValue},
            {LV2_OPTIONS_INSTANCE, 0, Map(LV2_BUF_SIZE__minBlockLength), sizeof kBlockValue,
             intType, &kBlockValue},
            {LV2_OPTIONS_INSTANCE, 0, Map(LV2_BUF_SIZE__nominalBlockLength), sizeof kBlockValue,
             intType, &kBlockValue},
            {LV2_OPTIONS_INSTANCE, 0, 0, 0, 0, nullptr},
        };
        featureStore_ = {{LV2_URID__map, &map_},
                         {LV2_OPTIONS__options, options_.data()},
                         {LV2_WORKER__schedule, &schedule_},
                         {LV2_BUF_SIZE__boundedBlockLength, nullptr}};
        for (const LV2_Feature& f : featureStore_)
            features_.push_back(&f);
        features_.push_back(nullptr);
    }

    void ConnectPorts() {
        const uint32_t count = lilv_plugin_get_num_ports(plugin_);
        buffers_.assign(count, std::vector<float>(kPortFloats, 0.0f));
        std::vector<float> defaults(count);
        lilv_plugin_get_port_ranges_float(plugin_, nullptr, nullptr, defaults.data());
        LilvNode* audio = lilv_new_uri(World(), LV2_CORE__AudioPort);
        LilvNode* atom = lilv_new_uri(World(), LV2_ATOM__AtomPort);
        LilvNode* input = lilv_new_uri(World(), LV2_CORE__InputPort);
        for (uint32_t i = 0; i < count; ++i) {
            const LilvPort* port = lilv_plugin_get_port_by_index(plugin_, i);
            const bool isInput = lilv_port_is_a(plugin_, port, input);
            if (lilv_port_is_a(plugin_, port, audio)) {
                if (isInput) FillSignal(buffers_[i], inputs_++);
                if (!isInput && outputPort_ == 0) outputPort_ = i;
            } else if (lilv_port_is_a(plugin_, port, atom)) {
                atomPorts_.emplace_back(i, isInput);
            } else if (!std::isnan(defaults[i])) {
                buffers_[i][0] = defaults[i];
            }
            lilv_instance_connect_port(instance_, i, buffers_[i].data());
        }
        lilv_node_free(audio);
        lilv_node_free(atom);
        lilv_node_free(input);
        ResetAtomPorts();
    }

    // An input sequence stays empty; an output sequence is offered its whole buffer again.
    void ResetAtomPorts() {
        for (const auto& [index, isInput] : atomPorts_) {
            auto* sequence = reinterpret_cast<LV2_Atom_Sequence*>(buffers_[index].data());
            sequence->atom.type = Map(isInput ? LV2_ATOM__Sequence : LV2_ATOM__Chunk);
            sequence->atom.size =
                isInput ? sizeof(LV2_Atom_Sequence_Body)
                        : static_cast<uint32_t>(kPortFloats * sizeof(float) - sizeof(LV2_Atom));
            sequence->body = {0, 0};
        }
    }

    static void FillSignal(std::vector<float>& buffer, int channel) {
        for (int i = 0; i < kBlock; ++i) {
            buffer[static_cast<std::size_t>(i)] = static_cast<float>(
                0.25 * std::sin(2.0 * std::numbers::pi * (300.0 + 200.0 * channel) * i / kRate));
        }
    }

    void Set(const std::string& symbol, float value) {
        LilvNode* node = lilv_new_string(World(), symbol.c_str());
        const LilvPort* port = lilv_plugin_get_port_by_symbol(plugin_, node);
        lilv_node_free(node);
        if (port != nullptr) buffers_[lilv_port_get_index(plugin_, port)][0] = value;
    }

    void LoadPreset(const std::string& uri) {
        LilvNode* node = lilv_new_uri(World(), uri.c_str());
        lilv_world_load_resource(World(), node);
        LilvState* state = lilv_state_new_from_world(World(), &map_, node);
        lilv_node_free(node);
        if (state == nullptr) return;
        lilv_state_restore(state, instance_, nullptr, nullptr, 0, features_.data());
        lilv_state_free(state);
    }

    static constexpr int32_t kBlockValue = kBlock;
    const LilvPlugin* plugin_ = nullptr;
    LilvInstance* instance_ = nullptr;
    std::map<std::string, LV2_URID> urids_;
    LV2_URID_Map map_{};
    LV2_Worker_Schedule schedule_{};
    const LV2_Worker_Interface* worker_ = nullptr;
    std::vector<LV2_Options_Option> options_;
    std::vector<LV2_Feature> featureStore_;
    std::vector<const LV2_Feature*> features_;
    std::vector<std::vector<float>> buffers_;
    std::vector<std::pair<uint32_t, bool>> atomPorts_;
    uint32_t outputPort_ = 0;
    int inputs_ = 0;
    std::array<Work, 16> work_{};
    std::size_t queued_ = 0;
};

bool IsInstalled(const Equalizer& eq) {
    LilvNode* uri = lilv_new_uri(World(), eq.uri.c_str());
    const bool found = lilv_plugins_get_by_uri(lilv_world_get_all_plugins(World()), uri) != nullptr;
    lilv_node_free(uri);
    return found;
}

void BM_Lv2Equalizer(benchmark::State& state, const Equalizer& eq) {
    BenchHost host(eq);
    if (!host.Ok()) {
        state.SkipWithError((std::string(eq.label) + " could not be instantiated").c_str());
        return;
    }
    for (int i = 0; i < 50; ++i)
        host.Run();  // settle the controls and the gain smoothing
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        host.Run();
        benchmark::DoNotOptimize(host.Output());
        benchmark::ClobberMemory();
    }
    const std::chrono::duration<double, std::nano> spent = std::chrono::steady_clock::now() - start;
    const double frames = static_cast<double>(state.iterations()) * kBlock;
    state.SetItemsProcessed(state.iterations() * kBlock);
    state.counters["ns_per_frame"] = spent.count() / frames;
}

const bool kRegistered = [] {
    static const std::vector<Equalizer> equalizers = Equalizers();
    for (const Equalizer& eq : equalizers) {
        if (!IsInstalled(eq)) {
            std::fprintf(stderr, "skipped: %s is not installed (Debian package %s)\n", eq.label,
                         eq.package);
            continue;
        }
        benchmark::RegisterBenchmark(("BM_Lv2Equalizer/" + std::string(eq.label)).c_str(),
                                     BM_Lv2Equalizer, eq);
    }
    return true;
}();

// The console table as usual, and each equalizer's best processor time per frame kept for the
// peer row.
class PeerReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.error_occurred || run.run_type != Run::RT_Iteration) continue;
            const std::string name = run.run_name.function_name;
            const std::string label = name.substr(name.find('/') + 1);
            const double perFrame = run.GetAdjustedCPUTime() / kBlock;  // ns: the default unit
            auto [it, added] = best_.try_emplace(label, perFrame);
            if (!added && perFrame < it->second) it->second = perFrame;
        }
    }

    void PrintPeerRow() const {
        const auto vorix = best_.find("Vorix");
        const std::pair<const std::string, double>* fastest = nullptr;
        for (const auto& entry : best_) {
            if (entry.first == "Vorix") continue;
            if (fastest == nullptr || entry.second < fastest->second) fastest = &entry;
        }
        if (vorix == best_.end() || fastest == nullptr) {
            std::printf("peer row: needs Vorix and at least one other equalizer in the run\n");
            return;
        }
        std::printf("peer row (10 filters, stereo, 48 kHz, block %d, best CPU ns per frame): "
                    "Vorix %.2f, %s %.2f, Vorix takes %.2f of its time\n",
                    kBlock, vorix->second, fastest->first.c_str(), fastest->second,
                    vorix->second / fastest->second);
    }

  private:
    std::map<std::string, double> best_;
};

}  // namespace
}  // namespace vorix

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    vorix::PeerReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintPeerRow();
    benchmark::Shutdown();
    return 0;
}
