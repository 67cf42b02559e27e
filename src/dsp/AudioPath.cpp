#include "dsp/AudioPath.h"

#include <algorithm>
#include <cstring>

#include "dsp/DenormalGuard.h"
#include "dsp/ExternalFilter.h"
#include "dsp/FilterChainOps.h"
#include "dsp/FilterRecovery.h"
#include "dsp/HarmonicFilter.h"
#include "dsp/OutputGain.h"
#include "dsp/SectionCascade.h"
#include "dsp/SectionKernel.h"

namespace vorix {
namespace {

constexpr int kMinimumWorkLength = 2048;

enum SoloChannel { kSoloBoth = 0, kSoloLeft = 1, kSoloRight = 2 };

bool Processes(const OpaqueFilterData* f) {
    return (f->flags.Load() & FilterFlags::NotProcessing) == 0;
}

// Gathers the sections of one or two channels that run in cascade: single-section filters, the
// active sub-filters of harmonic filters and the sections of External filters, each in its
// channel's order. A filter whose change ramps in this block has its ramp laid out first and runs
// in the cascade like any other, its first samples on the ramp's steps. The channels never mix,
// so pairing left section j with right section j in one register is free.
class CascadeRunner {
public:
    CascadeRunner(CascadeIsa isa, float* const* buffers, int lanes, int samples)
        : isa_(isa), buffers_(buffers), lanes_(lanes), samples_(samples) {}

    // Runs one chain filter of a lane as the chain walk reaches it.
    void Push(int lane, OpaqueFilterData* f) noexcept {
        const FilterProcessFunction process = f->process.Load();
        const FilterKind kind = KindOf(f);
        if (kind == FilterKind::SingleSection && process == &ProcessFilterBlock) {
            PushSection(lane, AsSection(f));
        } else if (kind == FilterKind::Harmonic && process == &ProcessHarmonicBlock) {
            PushHarmonic(lane, AsHarmonic(f));
        } else if (kind == FilterKind::External && process == &ProcessSectionsBlock) {
            // One snapshot of the section array, as the External kernel takes it.
            for (FilterSection& section : AsExternal(f)->sections.View()) {
                Gather(lane, CascadeStage{nullptr, &section, nullptr});
            }
        } else {
            // A record with a process function of its own runs through it, as in the reference.
            Flush();
            if (process != nullptr) process(f, buffers_[lane], buffers_[lane], samples_);
        }
    }

    // Runs the filters that a side-by-side walk reaches at the same place in both chains: a pair
    // whose halves ramp together designs each step once, for both.
    void PushPair(OpaqueFilterData* left, OpaqueFilterData* right) noexcept {
        const bool sections = KindOf(left) == FilterKind::SingleSection &&
                              KindOf(right) == FilterKind::SingleSection &&
                              left->process.Load() == &ProcessFilterBlock &&
                              right->process.Load() == &ProcessFilterBlock;
        if (!sections) {
            Push(0, left);
            Push(1, right);
            return;
        }
        if (RampDue(left) && RampDue(right)) {
            const RampSchedule* ramp = FreeSchedule();
            if (PrepareRampPair(left, right, samples_, &schedules_[used_])) {
                ++used_;
                Gather(0, CascadeStage{AsSection(left), nullptr, ramp});
                Gather(1, CascadeStage{AsSection(right), nullptr, ramp});
                return;
            }
        }
        PushSection(0, AsSection(left));
        PushSection(1, AsSection(right));
    }

    // Runs whatever is gathered. Audio thread.
    void Flush() noexcept {
        const int paired = lanes_ == 2 ? std::min(count_[0], count_[1]) : 0;
        if (paired > 0) {
            ProcessSectionCascadeStereo(isa_, group_[0], group_[1], paired, buffers_[0],
                                        buffers_[1], samples_);
        }
        for (int lane = 0; lane < lanes_; ++lane) {
            if (count_[lane] > paired) {
                ProcessSectionCascade(isa_, group_[lane] + paired, count_[lane] - paired,
                                      buffers_[lane], samples_);
            }
            count_[lane] = 0;
        }
        used_ = 0;
    }

private:
    static constexpr int kCapacity = 64;
    static constexpr int kSchedules = 8;

    void Gather(int lane, CascadeStage stage) noexcept {
        group_[lane][count_[lane]++] = stage;
        if (count_[lane] == kCapacity) Flush();
    }

    // A schedule that no gathered stage uses; when all are taken, what was gathered runs first.
    const RampSchedule* FreeSchedule() noexcept {
        if (used_ == kSchedules) Flush();
        return &schedules_[used_];
    }

    void PushSection(int lane, SectionFilterData* s) noexcept {
        if (!RampDue(s)) return Gather(lane, CascadeStage{s, nullptr, nullptr});
        const RampSchedule* ramp = FreeSchedule();
        if (PrepareRamp(s, samples_, &schedules_[used_])) {
            ++used_;
            Gather(lane, CascadeStage{s, nullptr, ramp});
            return;
        }
        Gather(lane, CascadeStage{s, nullptr, nullptr});
    }

    // In place, a harmonic filter is its active sub-filters in cascade.
    void PushHarmonic(int lane, HarmonicFilterData* h) noexcept {
        const int32_t components = h->components;
        int k = 1;
        for (OpaqueFilterData* sub = FirstFilter(h->subFilters); sub != nullptr;
             sub = NextFilter(sub), ++k) {
            const bool inRange = k == 1 || static_cast<int32_t>(sub->flags.Load()) > 0;
            if (HarmonicSelected(components, k) && inRange) PushSection(lane, AsSection(sub));
        }
    }

    CascadeIsa isa_;
    float* const* buffers_;
    int lanes_;
    int samples_;
    CascadeStage group_[2][kCapacity];
    int count_[2] = {0, 0};
    RampSchedule schedules_[kSchedules];
    int used_ = 0;
};

void RunChainReference(FilterChain* chain, float* buffer, int count) noexcept {
    for (OpaqueFilterData* f = FirstFilter(chain); f != nullptr; f = NextFilter(f)) {
        if (Processes(f)) f->process.Load()(f, buffer, buffer, count);
    }
}

// The fast walk of one block: the chains through the cascades.
void WalkChains(CascadeIsa isa, FilterChain* const* chains, float* const* at, const bool* runs,
                int channels, int count) noexcept {
    if (channels == 2 && runs[0] && runs[1]) {
        // Walk both chains side by side, so that partners tend to share a register.
        CascadeRunner runner(isa, at, 2, count);
        OpaqueFilterData* f[2] = {FirstFilter(chains[0]), FirstFilter(chains[1])};
        while (f[0] != nullptr || f[1] != nullptr) {
            if (f[0] != nullptr && f[1] != nullptr && Processes(f[0]) && Processes(f[1])) {
                runner.PushPair(f[0], f[1]);
                f[0] = NextFilter(f[0]);
                f[1] = NextFilter(f[1]);
                continue;
            }
            for (int lane = 0; lane < 2; ++lane) {
                if (f[lane] == nullptr) continue;
                if (Processes(f[lane])) runner.Push(lane, f[lane]);
                f[lane] = NextFilter(f[lane]);
            }
        }
        runner.Flush();
        return;
    }
    for (int c = 0; c < channels; ++c) {
        if (!runs[c]) continue;
        CascadeRunner runner(isa, &at[c], 1, count);
        for (OpaqueFilterData* f = FirstFilter(chains[c]); f != nullptr; f = NextFilter(f)) {
            if (Processes(f)) runner.Push(0, f);
        }
        runner.Flush();
    }
}

// After the whole block, in either walk: a filter whose history overflowed starts again from rest.
void RecoverChains(FilterChain* const* chains, const bool* runs, int channels) noexcept {
    for (int c = 0; c < channels; ++c) {
        if (!runs[c]) continue;
        for (OpaqueFilterData* f = FirstFilter(chains[c]); f != nullptr; f = NextFilter(f)) {
            if (Processes(f)) RecoverFilterState(f);
        }
    }
}

// Runs the chains of the channels that take part, in place on their work buffers.
void RunChains(AudioPathState& state, const AudioConfiguration& config, const bool* runs,
               int count) noexcept {
    float* buffers[2] = {state.workBuffer[0].data(),
                         state.channels > 1 ? state.workBuffer[1].data() : nullptr};
    FilterChain* chains[2] = {config.chains[0].load(std::memory_order_acquire),
                              config.chains[1].load(std::memory_order_acquire)};
    if (state.kernels == ChainKernels::Reference) {
        for (int c = 0; c < state.channels; ++c) {
            if (runs[c]) RunChainReference(chains[c], buffers[c], count);
        }
    } else {
        WalkChains(state.cascadeIsa, chains, buffers, runs, state.channels, count);
    }
    RecoverChains(chains, runs, state.channels);
}


// The filter a soloed filter puts on channel c, or null for a dry channel.
OpaqueFilterData* SoloFilterForChannel(OpaqueFilterData* solo, int c) {
    const uint32_t flags = solo->flags;
    const int mode = (flags & FilterFlags::LeftOnly)    ? kSoloLeft
                     : (flags & FilterFlags::RightOnly) ? kSoloRight
                                                        : kSoloBoth;
    if (c == 0) return mode != kSoloRight ? solo : nullptr;
    if (c == 1) {
        if (mode == kSoloBoth) return solo->partner.load(std::memory_order_acquire);
        if (mode == kSoloRight) return solo;
    }
    return nullptr;
}

void RunSolo(AudioPathState& state, OpaqueFilterData* solo, const float* const* inputs,
             const bool* runs, int count) noexcept {
    for (int c = 0; c < state.channels; ++c) {
        if (!runs[c]) continue;
        float* work = state.workBuffer[c].data();
        // A soloed filter runs whatever its flags say: a disabled filter can be auditioned.
        if (OpaqueFilterData* f = SoloFilterForChannel(solo, c)) {
            f->process.Load()(f, work, work, count);
            RecoverFilterState(f);
        } else {
            std::memcpy(work, inputs[c], sizeof(float) * static_cast<size_t>(count));
        }
    }
}

void ApplyGains(AudioPathState& state, const AudioConfiguration& config, const float* const* inputs,
                float* const* outputs, const bool* runs, int count, int mode) noexcept {
    for (int c = 0; c < state.channels; ++c) {
        if (!runs[c]) continue;
        GainSmoother g{state.gainState[c], state.gainSmoothing, config.compensationGain[c]};
        const float* work = state.workBuffer[c].data();
        if (mode == kProcessing) {
            ApplyOutputGain(g, work, outputs[c], count);
        } else {
            const float step = 1.0f / static_cast<float>(count);
            const bool toBypass = mode == kFadeToBypass;
            ApplyOutputGainFading(g, work, inputs[c], outputs[c], count, toBypass ? 1.0f : 0.0f,
                                  toBypass ? -step : step);
        }
        state.gainState[c] = g.gain;
        SilenceNonFinite(outputs[c], count);
    }
}

void Process(AudioPathState& state, const float* const* inputs, float* const* outputs, int count,
             int mode) noexcept {
    OpaqueFilterData* solo = state.soloFilter.load(std::memory_order_acquire);
    const AudioConfiguration& config =
        state.configurations[state.currentConfiguration.load(std::memory_order_acquire) & 1];
    bool runs[2] = {false, false};
    for (int c = 0; c < state.channels; ++c) {
        runs[c] = state.channelActive[c] && outputs[c] != nullptr && inputs[c] != nullptr;
        if (runs[c]) AddGuardNoise(inputs[c], state.workBuffer[c].data(), count, state.cascadeIsa);
    }
    if (solo == nullptr) {
        RunChains(state, config, runs, count);
    } else {
        RunSolo(state, solo, inputs, runs, count);
    }
    ApplyGains(state, config, inputs, outputs, runs, count, mode);
}

void Bypass(const AudioPathState& state, const float* const* inputs, float* const* outputs,
            int count) noexcept {
    for (int c = 0; c < state.channels; ++c) {
        if (inputs[c] == nullptr || outputs[c] == nullptr || inputs[c] == outputs[c]) continue;
        std::memcpy(outputs[c], inputs[c], sizeof(float) * static_cast<size_t>(count));
    }
}

void Meter(AudioPathState& state, float* const* outputs, int count) noexcept {
    if (!state.meteringEnabled) return;
    for (int c = 0; c < state.channels; ++c) {
        if (state.meters[c] != nullptr && outputs[c] != nullptr) {
            state.meters[c]->SetPeak(CollectPeak(outputs[c], count));
        }
    }
}

}  // namespace

void SetUpAudioBuffers(AudioPathState& state, int maxBlockSize, double sampleRate) {
    state.maxSamples = std::max(maxBlockSize, kMinimumWorkLength);
    for (int c = 0; c < 2; ++c) {
        state.workBuffer[c].assign(c < state.channels ? static_cast<size_t>(state.maxSamples) : 0,
                                   0.0f);
    }
    state.gainSmoothing = static_cast<float>(600.0 / sampleRate);
}

void ProcessAudioPath(AudioPathState& state, const float* const* inputs, float* const* outputs,
                      int count, int mode) noexcept {
    if (count > state.maxSamples || count < 0) return;
    switch (mode) {
        case kProcessing:
        case kFadeToBypass:
        case kFadeFromBypass: Process(state, inputs, outputs, count, mode); break;
        case kBypass: Bypass(state, inputs, outputs, count); break;
        default: break;  // idle, or a mode nobody knows: nothing is written
    }
    Meter(state, outputs, count);
}

}  // namespace vorix
