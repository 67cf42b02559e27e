#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "hostlib/GroupInterfaces.h"

namespace vorix {

class CProcessGroup;

// One kind of insert of the plug-in: its ids and names and the settings the host reads. The
// plug-in configures a type with the setters and then adds it to its group. Main thread.
class CProcessType : public IProcessType2, public IProcessType {
  public:
    CProcessType() = default;
    CProcessType(const CProcessType&) = delete;
    CProcessType& operator=(const CProcessType&) = delete;
    virtual ~CProcessType();

    // ---- settings, main thread ----
    void SetTypeID(std::int32_t id) noexcept { typeId_ = id; }
    void SetNameSet(std::string nameSet) { settings_.nameSet = std::move(nameSet); }
    void SetPlugInID(std::int32_t id) noexcept { settings_.plugInId = id; }
    void SetPlugInVersion(std::int32_t version) noexcept { settings_.plugInVersion = version; }
    void AddGestalt(std::int32_t selector) { settings_.gestalts.insert(selector); }
    void SetCategory(std::int32_t category) noexcept { settings_.category = category; }

    // Main thread. The group the type was added to, null before.
    CProcessGroup* GetGroup() const noexcept { return group_; }

    // ---- IProcessType and IProcessType2: main thread, never throwing ----
    std::int32_t GetTypeID() const noexcept override { return typeId_; }
    const char* GetNameSet() const noexcept override { return settings_.nameSet.c_str(); }
    const IProcessType2& GetDetails() const noexcept override { return *this; }
    std::int32_t GetPlugInID() const noexcept override { return settings_.plugInId; }
    std::int32_t GetPlugInVersion() const noexcept override { return settings_.plugInVersion; }
    bool HasGestalt(std::int32_t selector) const noexcept override;
    std::int32_t GetCategory() const noexcept override { return settings_.category; }
    const char* GetPageTableName() const noexcept override;

  protected:
    // What a type copies from a model type: everything but the type id.
    struct Settings {
        std::string nameSet;
        std::int32_t plugInId = 0;
        std::int32_t plugInVersion = 0;
        std::set<std::int32_t> gestalts;
        std::int32_t category = 0;
        std::string pageTableName;
    };
    Settings settings_;

  private:
    friend class CProcessGroup;

    std::int32_t typeId_ = 0;
    CProcessGroup* group_ = nullptr;
};

}  // namespace vorix
