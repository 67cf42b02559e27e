#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "core/CoreTestSupport.h"
#include "dsp/FilterChainOps.h"
#include "dsp/FilterParameters.h"
#include "engine/Ombrel.h"
#include "engine/OmbrelMessages.h"
#include "engine/VorixParameterIds.h"
#include "host/ZORVorixMetaClass.h"
#include "support/AudioPathFixture.h"

namespace vorix::test {

inline constexpr ChannelConfig kStereo{2, 2};
inline constexpr ChannelConfig kMono{1, 1};

// The meters' clock, moved by hand.
inline Ticks gMeterNow = 0;
inline Ticks MeterNow() noexcept {
    return gMeterNow;
}

// A four-character code as text, for readable failure output.
inline std::string Code(MsgId id) {
    std::string text(4, ' ');
    for (int i = 0; i < 4; ++i)
        text[static_cast<size_t>(i)] = static_cast<char>((static_cast<uint32_t>(id) >> (24 - 8 * i)) & 0xFF);
    return text;
}

// Hears the engine's filter messages, as the editor does, and keeps them in order.
class MessageLog : public OmbrelMessageSubscriber {
  public:
    using Entry = std::tuple<std::string, MsgParam, const OpaqueFilterData*>;

    explicit MessageLog(Ombrel* engine) : OmbrelMessageSubscriber(engine) {}

    std::vector<Entry> entries;
    std::vector<std::string> Codes() const {
        std::vector<std::string> codes;
        for (const Entry& entry : entries)
            codes.push_back(std::get<0>(entry));
        return codes;
    }

  protected:
    void HandleFilterMessage(MsgId msgId) override {
        if (msgId == kBatchBegun || msgId == kBatchEnded) return;
        entries.emplace_back(Code(msgId), mCurParam1, ParamPointer<OpaqueFilterData>(mCurParam2));
    }
    void HandleConfigMessage(MsgId) override {}
};

// One engine as a host makes it, with the product's description, a recording platform and a
// message log; at 48000 Hz unless told.
class EngineHarness {
  public:
    explicit EngineHarness(ChannelConfig config = kStereo, float rate = 48000.0f)
        : maker_((SetMetaClassMaker([] { return std::make_unique<ZORVorixMetaClass>(); }), 0)),
          engine(std::make_unique<Ombrel>(&platform, config, [] { return Ticks{0}; }, &MeterNow)),
          log(engine.get()) {
        engine->SetSampleRate(rate);
        engine->SetBlockSize(512);
        log.entries.clear();
        platform.reports.clear();
    }

    FilterChain* Chain(int channel) const { return engine->Chain(channel); }
    std::vector<OpaqueFilterData*> Filters(int channel = 0) const {
        std::vector<OpaqueFilterData*> filters;
        for (OpaqueFilterData* f = FirstFilter(Chain(channel)); f != nullptr; f = NextFilter(f))
            filters.push_back(f);
        return filters;
    }
    OpaqueFilterData* Filter(int position, int channel = 0) const {
        return Filters(channel).at(static_cast<size_t>(position));
    }
    std::vector<FilterType> Types(int channel = 0) const {
        std::vector<FilterType> types;
        for (OpaqueFilterData* f : Filters(channel))
            types.push_back(f->type);
        return types;
    }
    double Hz(const OpaqueFilterData* f) const {
        return GetFilterParameter(f, FilterParameterId::Frequency) * engine->GetSampleRate();
    }
    // The parameter of the product's table with `id`, as the host addresses it.
    const ZORParameterInfo* Info(int32_t id) const {
        return engine->MetaClass().FindParameterInfo(id);
    }
    void SetHost(int32_t id, float value) { engine->SetParameter(Info(id), value); }
    double GetHost(int32_t id) const { return engine->GetParameter(Info(id)); }
    // The last value the host heard for a parameter id, or nothing.
    std::vector<float> ReportsOf(int32_t id) const {
        std::vector<float> values;
        for (const auto& [index, value] : platform.reports) {
            if (Info(id)->index == index) values.push_back(value);
        }
        return values;
    }
    // One block of `frames` frames through the core's audio call.
    Block Process(const Block& input, int32_t bypass = 0) {
        Block output(input.size(), std::vector<float>(input[0].size()));
        std::vector<float*> in, out;
        for (size_t c = 0; c < input.size(); ++c) {
            in.push_back(const_cast<float*>(input[c].data()));
            out.push_back(output[c].data());
        }
        engine->Process(in.data(), out.data(), static_cast<int32_t>(input[0].size()), false,
                        bypass);
        return output;
    }

    TestPlatform platform;

  private:
    int maker_;
    MetaClassReference meta_;

  public:
    std::unique_ptr<Ombrel> engine;
    MessageLog log;
};

}  // namespace vorix::test
