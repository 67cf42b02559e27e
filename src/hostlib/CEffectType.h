#pragma once

#include <cstdint>
#include <string>

#include "hostlib/CDSPProcessType.h"

namespace vorix {

class CEffectProcess;

// An effect type: it makes its processes through the plug-in's factory, connects each to its
// render road, and runs EffectInit. Main thread.
class CEffectType : public CDSPProcessType {
  public:
    // Makes a new process; the type takes it over. May throw.
    using ProcessFactory = CEffectProcess* (*)();

    // Main thread. The plug-in's maker of processes.
    void SetProcessFactory(ProcessFactory factory) noexcept { factory_ = factory; }
    // Main thread. Takes every setting of a model type but the type id, so that related types
    // (mono, mono-to-stereo, stereo) differ only where the caller sets them afterwards.
    void CopySettingsFrom(const CEffectType& model);

    // Main thread. Makes, connects and initialises a process. A failing factory or EffectInit
    // answers kErrInitFailed (kErrOutOfMemory when memory ran out) and leaves nothing behind.
    std::int32_t NewProcess(const ProcessSetup& setup, IProcess*& process) noexcept override;

  protected:
    // Main thread. Joins a new process to the render road of this kind of type: kNoErr, or
    // kErrInitFailed for a process this type cannot drive.
    virtual std::int32_t ConnectProcess(CEffectProcess& process) = 0;

  private:
    ProcessFactory factory_ = nullptr;
};

// A real-time type. A process without a render routine of its own (an offline-style process) is
// driven through the library's adaptor; a real-time process renders directly.
class CEffectTypeRTAS : public CEffectType {
  public:
    // Main thread. The name of the control-surface page tables in the plug-in's resources.
    void SetPageTableName(std::string name) { settings_.pageTableName = std::move(name); }
    // Main thread.
    bool IsRealTime() const noexcept override { return true; }

  protected:
    std::int32_t ConnectProcess(CEffectProcess& process) override;
};

// An offline type: its processes render from connections, through the adaptor.
class CEffectTypeAS : public CEffectType {
  public:
    // Main thread.
    bool IsRealTime() const noexcept override { return false; }

  protected:
    std::int32_t ConnectProcess(CEffectProcess& process) override;
};

}  // namespace vorix
