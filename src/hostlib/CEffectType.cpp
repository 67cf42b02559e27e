#include "hostlib/CEffectType.h"

#include <memory>
#include <new>

#include "hostlib/CAdaptorPlugIn.h"
#include "hostlib/CEffectProcessAS.h"
#include "hostlib/LibraryErrors.h"

namespace vorix {
namespace {

// A process not yet handed to the host goes the way the host's would.
struct ReleaseProcess {
    void operator()(CEffectProcess* process) const noexcept { process->Release(); }
};
using ProcessHolder = std::unique_ptr<CEffectProcess, ReleaseProcess>;

std::int32_t ConnectThroughAdaptor(CEffectProcess& process) {
    auto* connectionBased = dynamic_cast<CEffectProcessAS*>(&process);
    if (connectionBased == nullptr) return kErrInitFailed;
    process.AttachAdaptor(std::make_unique<CAdaptorPlugIn>(*connectionBased));
    return kNoErr;
}

}  // namespace

void CEffectType::CopySettingsFrom(const CEffectType& model) {
    settings_ = model.settings_;
    dspSettings_ = model.dspSettings_;
    factory_ = model.factory_;
}

std::int32_t CEffectType::NewProcess(const ProcessSetup& setup, IProcess*& process) noexcept {
    process = nullptr;
    if (factory_ == nullptr || setup.sampleRate <= 0) return kErrInitFailed;
    try {
        ProcessHolder made(factory_());
        if (made == nullptr) return kErrOutOfMemory;
        if (const std::int32_t error = ConnectProcess(*made); error != kNoErr) return error;
        GetChannelCounts(made->inputCount_, made->outputCount_);
        made->Connect(*this, setup);
        made->EffectInit();
        process = made.release();
        return kNoErr;
    } catch (const std::bad_alloc&) {
        return kErrOutOfMemory;
    } catch (...) {
        return kErrInitFailed;
    }
}

std::int32_t CEffectTypeRTAS::ConnectProcess(CEffectProcess& process) {
    // An offline-style process is tried first: it has no render routine of its own.
    if (dynamic_cast<CEffectProcessAS*>(&process) != nullptr) return ConnectThroughAdaptor(process);
    if (dynamic_cast<CEffectProcessRTAS*>(&process) != nullptr) return kNoErr;
    return kErrInitFailed;
}

std::int32_t CEffectTypeAS::ConnectProcess(CEffectProcess& process) {
    return ConnectThroughAdaptor(process);
}

}  // namespace vorix
