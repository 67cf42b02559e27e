#pragma once

#include <cstdint>

#include "hostlib/ProcessInterfaces.h"

namespace vorix {

// The host's side of a plug-in file: its group and the effect types the group lists. All calls
// on the main thread; none throws.

// The details of an effect type beyond what the host lists.
class IProcessType2 {
  public:
    virtual std::int32_t GetPlugInID() const noexcept = 0;
    virtual std::int32_t GetPlugInVersion() const noexcept = 0;
    virtual bool HasGestalt(std::int32_t selector) const noexcept = 0;
    virtual std::int32_t GetCategory() const noexcept = 0;
    virtual std::int32_t GetDSPClass() const noexcept = 0;
    // The name of the control-surface page tables, "" when the type has none.
    virtual const char* GetPageTableName() const noexcept = 0;

  protected:
    ~IProcessType2() = default;
};

// One kind of insert the host lists, and the maker of its processes.
class IProcessType {
  public:
    virtual std::int32_t GetTypeID() const noexcept = 0;
    // Names of falling length, one per line.
    virtual const char* GetNameSet() const noexcept = 0;
    virtual void GetChannelCounts(std::int32_t& inputs, std::int32_t& outputs) const noexcept = 0;
    // True for a real-time insert, false for an offline one.
    virtual bool IsRealTime() const noexcept = 0;
    virtual const IProcessType2& GetDetails() const noexcept = 0;
    // Makes, connects and initialises a process; the host releases it with IProcess::Release.
    virtual std::int32_t NewProcess(const ProcessSetup& setup, IProcess*& process) noexcept = 0;

  protected:
    ~IProcessType() = default;
};

// The plug-in file as a whole: its maker and product, and its effect types.
class IProcessGroup {
  public:
    virtual const char* GetManufacturerNameSet() const noexcept = 0;
    virtual std::int32_t GetManufacturerID() const noexcept = 0;
    virtual const char* GetProductNameSet() const noexcept = 0;
    virtual bool HasGestalt(std::int32_t selector) const noexcept = 0;
    virtual std::int32_t CountEffectTypes() const noexcept = 0;
    // The type at a position from 0, or null.
    virtual IProcessType* GetEffectType(std::int32_t position) noexcept = 0;
    // The processes made and not yet released.
    virtual std::int32_t CountProcesses() const noexcept = 0;

  protected:
    ~IProcessGroup() = default;
};

}  // namespace vorix
