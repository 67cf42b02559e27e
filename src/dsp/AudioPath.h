#pragma once

#include <atomic>
#include <vector>

#include "dsp/FilterRecord.h"
#include "dsp/PeakMeter.h"
#include "dsp/RelaxedAtomic.h"
#include "dsp/SectionCascade.h"

namespace vorix {

// Process modes, the last argument of the process call.
enum ProcessMode : int {
    kProcessing = 0,      // filters and output gain
    kBypass = 1,          // input copied to output, no filter, no gain
    kIdle = 2,            // nothing written
    kFadeToBypass = 3,    // processing crossfaded from wet to dry over the block
    kFadeFromBypass = 4,  // processing crossfaded from dry to wet over the block
};

// What audio sees of one configuration: a chain per channel and a compensation gain per channel.
struct AudioConfiguration {
    std::atomic<FilterChain*> chains[2] = {nullptr, nullptr};
    RelaxedAtomic<float> compensationGain[2] = {1.0f, 1.0f};  // linear ratio
};

// Which kernels run the chains. Reference walks each chain and runs every filter through its
// process function, one filter over the whole block at a time; Fast runs the same sections as
// lane-packed cascades with both channels side by side. The two give identical bits.
enum class ChainKernels { Fast, Reference };

// The state the process call works on. The engine owns it; the editor side changes the
// configurations, the solo filter and the compensation gains while audio runs.
struct AudioPathState {
    int channels = 2;
    std::atomic<int> currentConfiguration{0};
    AudioConfiguration configurations[2];
    std::atomic<OpaqueFilterData*> soloFilter{nullptr};
    RelaxedAtomic<bool> channelActive[2] = {true, true};
    RelaxedAtomic<bool> meteringEnabled{true};
    PeakReceiver* meters[2] = {nullptr, nullptr};
    ChainKernels kernels = ChainKernels::Fast;
    // The instruction set of the fast walk's cascades; any supported one gives the same bits.
    CascadeIsa cascadeIsa = BestCascadeIsa();

    // Owned by the audio thread once set up.
    std::vector<float> workBuffer[2];
    int maxSamples = 0;  // the larger of the host's maximum block size and 2048
    float gainState[2] = {1.0f, 1.0f};
    float gainSmoothing = 0.0f;
};

// Sizes the work buffers for the host's maximum block size (at least 2048 samples) and sets the
// gain smoothing for the sample rate. Main thread, while audio is stopped or held off: allocates.
void SetUpAudioBuffers(AudioPathState& state, int maxBlockSize, double sampleRate);

// The engine's process operation: guard noise, the chains of the current configuration (or the
// soloed filter), smoothed compensation gain, bypass fades, and the meters. A count above the
// work buffers' length returns at once. Audio thread; never allocates, locks, throws or waits.
void ProcessAudioPath(AudioPathState& state, const float* const* inputs, float* const* outputs,
                      int count, int mode) noexcept;

}  // namespace vorix
