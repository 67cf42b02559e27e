#pragma once

#include <cstdint>

namespace vorix {

// What a port of a Vorix plug-in carries.
enum class Lv2PortRole {
    AudioInput,
    AudioOutput,
    Parameter,  // one host parameter, in the order of the parameter table
    Enabled,    // the master bypass, as the host's enable switch
    Meter,      // one output meter per channel
    Latency,    // the latency the plug-in reports, in frames
    None,       // beyond the last port
};

// A port's role and its number within the role (channel, table index); number 0 for the
// single ports.
struct Lv2PortSlot {
    Lv2PortRole role = Lv2PortRole::None;
    std::int32_t number = 0;
};

// The port indices of a plug-in with `channels` channels and `parameters` host parameters: the
// audio inputs, the audio outputs, the parameters in table order, the enable switch, the meters
// and the latency, in that order. The plug-in and the generator of its description both read
// them from here, so the two cannot disagree. Any thread; never allocates.
class Lv2PortLayout {
  public:
    constexpr Lv2PortLayout(std::int32_t channels, std::int32_t parameters) noexcept
        : channels_(channels), parameters_(parameters) {}

    constexpr std::int32_t Channels() const noexcept { return channels_; }
    constexpr std::int32_t Parameters() const noexcept { return parameters_; }

    constexpr std::uint32_t AudioInput(std::int32_t channel) const noexcept {
        return Index(channel);
    }
    constexpr std::uint32_t AudioOutput(std::int32_t channel) const noexcept {
        return Index(channels_ + channel);
    }
    constexpr std::uint32_t Parameter(std::int32_t tableIndex) const noexcept {
        return Index(2 * channels_ + tableIndex);
    }
    constexpr std::uint32_t Enabled() const noexcept { return Index(2 * channels_ + parameters_); }
    constexpr std::uint32_t Meter(std::int32_t channel) const noexcept {
        return Enabled() + 1 + Index(channel);
    }
    constexpr std::uint32_t Latency() const noexcept { return Meter(channels_); }
    constexpr std::uint32_t Count() const noexcept { return Latency() + 1; }

    // The role and number of port `index`; None beyond the last port.
    constexpr Lv2PortSlot SlotOf(std::uint32_t index) const noexcept {
        const auto i = static_cast<std::int32_t>(index);
        if (index >= Count()) return {};
        if (i < channels_) return {Lv2PortRole::AudioInput, i};
        if (i < 2 * channels_) return {Lv2PortRole::AudioOutput, i - channels_};
        if (index < Enabled()) return {Lv2PortRole::Parameter, i - 2 * channels_};
        if (index == Enabled()) return {Lv2PortRole::Enabled, 0};
        if (index < Latency()) return {Lv2PortRole::Meter, i - static_cast<std::int32_t>(Meter(0))};
        return {Lv2PortRole::Latency, 0};
    }

  private:
    static constexpr std::uint32_t Index(std::int32_t value) noexcept {
        return static_cast<std::uint32_t>(value);
    }

    std::int32_t channels_;
    std::int32_t parameters_;
};

}  // namespace vorix
