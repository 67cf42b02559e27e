#include "CoreRenderer.h"

#include <gtest/gtest.h>

#include "core/BypassState.h"
#include "host/ZORVorixMetaClass.h"
#include "lv2/Lv2Plugin.h"

namespace vorix::test {

namespace {

MetaClassReference ProductMetaClass() {
    SetMetaClassMaker([] { return std::make_unique<ZORVorixMetaClass>(); });
    return {};
}

}  // namespace

CoreRenderer::CoreRenderer(int channels, float rate, int blockSize)
    : metaClass_(ProductMetaClass()),
      core_(metaClass_.get()->CreateCore(nullptr, ChannelConfig{channels, channels})) {
    core_->CaptureDefaultSettings();
    core_->ResetAudioState();
    core_->SetSampleRate(rate);
    core_->SetBlockSize(blockSize);
    core_->Start();
}

void CoreRenderer::Set(const std::vector<HostParameter>& parameters) {
    for (const HostParameter& parameter : parameters) {
        if (parameter.symbol == "enabled") {
            bypass_ = parameter.value > 0.5f ? kBypassModeActive : kBypassModeEngineKept;
            continue;
        }
        core_->SetParameterByIndex(IndexOf(parameter.symbol), parameter.value);
    }
}

float CoreRenderer::Get(const std::string& symbol) {
    return static_cast<float>(core_->GetParameterByIndex(IndexOf(symbol)));
}

int CoreRenderer::IndexOf(const std::string& symbol) {
    for (int index = 0; index < metaClass_.get()->GetParameterCount(); ++index) {
        if (symbol == metaClass_.get()->GetParameterInfo(index)->name) return index;
    }
    ADD_FAILURE() << "no parameter " << symbol;
    return -1;
}

void CoreRenderer::SetProgram(int number) {
    // Switching to the program already current loads nothing; go through another one.
    if (core_->GetProgram() == number) core_->SetProgram(number + 1);
    core_->SetProgram(number);
}

}  // namespace vorix::test
