#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "hostlib/CProcessGroupInterface.h"

namespace vorix {

class CProcess;
class CProcessType;

// The plug-in file as a whole: who makes it, what it is called, its types and its live
// processes. The plug-in sets its identity in its constructor and builds its types in
// CreateEffectTypes. Main thread.
class CProcessGroup : public CProcessGroupInterface {
  public:
    CProcessGroup() = default;
    // Main thread. Destroys the processes the host left behind, then the types.
    ~CProcessGroup() override;

    // ---- identity, main thread ----
    // Names of falling length, one per line.
    void SetManufacturerNameSet(std::string nameSet) { manufacturerNameSet_ = std::move(nameSet); }
    void SetManufacturerID(std::int32_t id) noexcept { manufacturerId_ = id; }
    // The product's names, and the number the maker gives the product among its own.
    void SetProductNameSet(std::string nameSet, std::int32_t productNumber);
    std::int32_t GetProductNumber() const noexcept { return productNumber_; }
    void AddGestalt(std::int32_t selector) { gestalts_.insert(selector); }

    // Main thread: builds the types through CreateEffectTypes.
    std::int32_t Initialize() noexcept override;
    // Main thread, from Initialize: the plug-in's types are made and added here.
    virtual void CreateEffectTypes() = 0;

    // Main thread. Takes a configured type over and lists it; answers it.
    CProcessType& AddProcessType(std::unique_ptr<CProcessType> type);

    // ---- IProcessGroup: main thread, never throwing ----
    const char* GetManufacturerNameSet() const noexcept override;
    std::int32_t GetManufacturerID() const noexcept override { return manufacturerId_; }
    const char* GetProductNameSet() const noexcept override;
    bool HasGestalt(std::int32_t selector) const noexcept override;
    std::int32_t CountEffectTypes() const noexcept override;
    IProcessType* GetEffectType(std::int32_t position) noexcept override;
    std::int32_t CountProcesses() const noexcept override;

  private:
    friend class CProcess;

    // A process joins the group when its type connects it and leaves when it is destroyed.
    void AddProcess(CProcess& process);
    void RemoveProcess(CProcess& process) noexcept;

    std::string manufacturerNameSet_;
    std::int32_t manufacturerId_ = 0;
    std::string productNameSet_;
    std::int32_t productNumber_ = 0;
    std::set<std::int32_t> gestalts_;
    std::vector<std::unique_ptr<CProcessType>> types_;
    std::vector<CProcess*> processes_;
};

}  // namespace vorix
