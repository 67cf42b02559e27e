// What the audio path costs per frame: chains of Parametric filters at 48 kHz in the standard
// block sizes, steady and with one parameter change per block, and the multi-section kinds, on
// each instruction set of the cascades that the processor has, side by side. VORIX_BENCH_ISA
// (a comma-separated list of sse2, avx2, avx512) narrows the instruction sets; unset, all run.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

#include "dsp/ExternalFilter.h"
#include "dsp/FilterParameters.h"
#include "support/AudioPathFixture.h"

namespace vorix {
namespace {

using test::AudioPathFixture;

// Nanoseconds of wall time per frame over the whole timed loop, as a plain number, so that the
// console table and the JSON output carry the same figure.
void ReportPerFrame(benchmark::State& state, int block, std::chrono::steady_clock::duration spent) {
    const double frames = static_cast<double>(state.iterations()) * block;
    state.SetItemsProcessed(state.iterations() * block);
    state.counters["ns_per_frame"] =
        std::chrono::duration<double, std::nano>(spent).count() / frames;
}

// Runs blocks through the fixture; `change` is called before each block.
template <typename Change>
void RunBlocks(benchmark::State& state, AudioPathFixture& fixture, int channels, int block,
               Change change) {
    auto in = test::MakeSignal(channels, block);
    auto out = in;
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        change();
        fixture.Process(in, out, block);
        benchmark::DoNotOptimize(out[0].data());
        benchmark::ClobberMemory();
    }
    ReportPerFrame(state, block, std::chrono::steady_clock::now() - start);
}

void BM_ParametricChain(benchmark::State& state, CascadeIsa isa) {
    const int filters = static_cast<int>(state.range(0));
    const int block = static_cast<int>(state.range(1));
    const int channels = static_cast<int>(state.range(2));
    AudioPathFixture fixture(channels, block);
    fixture.state.cascadeIsa = isa;
    fixture.AddParametricSpread(filters);
    RunBlocks(state, fixture, channels, block, [] {});
}

// One filter (a both-channel pair on stereo) changes its gain before every block, so each block
// carries one ramp with sixteen redesigns per changed record.
void BM_ParametricChainAutomated(benchmark::State& state, CascadeIsa isa) {
    const int filters = static_cast<int>(state.range(0));
    const int block = static_cast<int>(state.range(1));
    const int channels = static_cast<int>(state.range(2));
    AudioPathFixture fixture(channels, block);
    fixture.state.cascadeIsa = isa;
    fixture.AddParametricSpread(filters);
    OpaqueFilterData* first = FirstFilter(fixture.chains[0]);
    int turn = 0;
    RunBlocks(state, fixture, channels, block, [&] {
        OpaqueFilterData* f = first;
        for (int k = turn % filters; k > 0; --k) f = NextFilter(f);
        AudioPathFixture::SetBoth(f, FilterParameterId::Gain, (turn & 1) ? 3.0f : -3.0f);
        ++turn;
    });
}

void ChainArguments(benchmark::internal::Benchmark* b) {
    b->ArgNames({"filters", "block", "channels"});
    for (int channels : {2, 1}) {
        for (int filters : {1, 10, 32}) {
            for (int block : {64, 512, 4096}) b->Args({filters, block, channels});
        }
    }
}

void BM_Harmonic8(benchmark::State& state, CascadeIsa isa) {
    const int channels = static_cast<int>(state.range(0));
    constexpr int kBlock = 512;
    AudioPathFixture fixture(channels, kBlock);
    fixture.state.cascadeIsa = isa;
    OpaqueFilterData* hum = fixture.Add(kHarmonic8);
    AudioPathFixture::SetBoth(hum, FilterParameterId::Frequency, static_cast<float>(fixture.Hz(60.0)));
    AudioPathFixture::SetBoth(hum, FilterParameterId::Gain, -18.0f);
    AudioPathFixture::SetBoth(hum, FilterParameterId::Bandwidth, 0.01f);
    RunBlocks(state, fixture, channels, kBlock, [] {});
}
void BM_External4Sections(benchmark::State& state, CascadeIsa isa) {
    const int channels = static_cast<int>(state.range(0));
    constexpr int kBlock = 512;
    AudioPathFixture fixture(channels, kBlock);
    fixture.state.cascadeIsa = isa;
    FilterDescription telephone;
    telephone.type = kExternalFilter;
    for (int s = 0; s < 4; ++s) {
        telephone.numerators.push_back({0.2f, 0.1f * static_cast<float>(s), -0.1f});
        telephone.denominators.push_back({1.0f, -0.5f, 0.2f});
    }
    for (FilterChain* chain : fixture.chains) {
        if (chain == nullptr) continue;
        OpaqueFilterData* f = CreateFilterInChain(chain, 0, kExternalFilter);
        LoadExternalSections(f, telephone);
    }
    RunBlocks(state, fixture, channels, kBlock, [] {});
}
// The instruction sets to run: those the processor has, narrowed by VORIX_BENCH_ISA.
std::vector<CascadeIsa> BenchIsas() {
    const char* wanted = std::getenv("VORIX_BENCH_ISA");
    std::string list = ",";
    list.append(wanted != nullptr ? wanted : "").append(",");
    std::vector<CascadeIsa> isas;
    for (CascadeIsa isa : {CascadeIsa::Sse2, CascadeIsa::Avx2, CascadeIsa::Avx512}) {
        std::string name = ",";
        name.append(CascadeIsaName(isa)).append(",");
        const bool named = list.find(name) != std::string::npos;
        if (CascadeIsaSupported(isa) && (wanted == nullptr || named)) isas.push_back(isa);
    }
    return isas;
}

void RegisterAll() {
    for (CascadeIsa isa : BenchIsas()) {
        std::string on = "/isa:";
        on.append(CascadeIsaName(isa));
        benchmark::RegisterBenchmark(("BM_ParametricChain" + on).c_str(), BM_ParametricChain, isa)
            ->Apply(ChainArguments);
        benchmark::RegisterBenchmark(("BM_ParametricChainAutomated" + on).c_str(),
                                     BM_ParametricChainAutomated, isa)
            ->Apply(ChainArguments);
        benchmark::RegisterBenchmark(("BM_Harmonic8" + on).c_str(), BM_Harmonic8, isa)
            ->ArgName("channels")->Arg(1)->Arg(2);
        benchmark::RegisterBenchmark(("BM_External4Sections" + on).c_str(), BM_External4Sections, isa)
            ->ArgName("channels")->Arg(1)->Arg(2);
    }
}

}  // namespace
}  // namespace vorix

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    vorix::RegisterAll();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
