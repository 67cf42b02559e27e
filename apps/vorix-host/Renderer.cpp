#include "vorix-host/Renderer.h"

#include <algorithm>
#include <string>

#include "vorix-host/HostError.h"

namespace vorix {
namespace {

std::string ChannelsText(std::int32_t count) {
    return std::to_string(count) + (count == 1 ? " channel" : " channels");
}

void CheckShapes(const Insert& insert, const AudioData& input, std::int32_t blockSize) {
    if (blockSize < 1) throw UsageError("The block size must be at least 1 sample.");
    if (input.ChannelCount() != insert.Inputs()) {
        throw HostError("The input has " + ChannelsText(input.ChannelCount()) +
                        ", but the insert takes " + ChannelsText(insert.Inputs()) + ".");
    }
}

}  // namespace

AudioData RenderThrough(Insert& insert, const AudioData& input, std::int32_t blockSize,
                        std::vector<AutomationEvent> automation) {
    CheckShapes(insert, input, blockSize);
    const std::int64_t frames = input.Frames();
    AudioData output;
    output.sampleRate = input.sampleRate;
    output.channels.assign(static_cast<std::size_t>(insert.Outputs()),
                           std::vector<float>(static_cast<std::size_t>(frames)));
    std::stable_sort(
        automation.begin(), automation.end(),
        [](const AutomationEvent& a, const AutomationEvent& b) { return a.frame < b.frame; });
    // The host's own input buffers, filled from the track for each block.
    std::vector<std::vector<float>> blockInputs(
        input.channels.size(), std::vector<float>(static_cast<std::size_t>(blockSize)));
    std::vector<float*> inputs;
    for (auto& buffer : blockInputs)
        inputs.push_back(buffer.data());
    std::vector<float*> outputs(output.channels.size());
    auto next = automation.begin();
    insert.StartProcessing();
    for (std::int64_t start = 0; start < frames; start += blockSize) {
        for (; next != automation.end() && next->frame <= start; ++next) {
            insert.WriteControl(next->control, next->value);
        }
        const auto count =
            static_cast<std::int32_t>(std::min<std::int64_t>(blockSize, frames - start));
        for (std::size_t c = 0; c < inputs.size(); ++c) {
            const auto from = input.channels[c].begin() + start;
            std::copy(from, from + count, blockInputs[c].begin());
        }
        for (std::size_t c = 0; c < outputs.size(); ++c)
            outputs[c] = output.channels[c].data() + start;
        const std::int32_t rendered = insert.Render(inputs, outputs, count);
        if (rendered != count) {
            insert.StopProcessing();
            throw HostError("The insert rendered " + std::to_string(rendered) + " of a block of " +
                            std::to_string(count) + " samples.");
        }
    }
    insert.StopProcessing();
    return output;
}

}  // namespace vorix
