#include "hostlib/CProcessGroup.h"

#include <algorithm>
#include <new>
#include <utility>

#include "hostlib/CProcess.h"
#include "hostlib/CProcessType.h"
#include "hostlib/LibraryErrors.h"

namespace vorix {

CProcessGroup::~CProcessGroup() {
    // A host that closes the file with inserts still open leaves them to the group.
    std::vector<CProcess*> leftovers;
    leftovers.swap(processes_);
    for (CProcess* process : leftovers) {
        process->ForgetGroup();
        delete process;
    }
}

void CProcessGroup::SetProductNameSet(std::string nameSet, std::int32_t productNumber) {
    productNameSet_ = std::move(nameSet);
    productNumber_ = productNumber;
}

std::int32_t CProcessGroup::Initialize() noexcept {
    try {
        CreateEffectTypes();
        return kNoErr;
    } catch (const std::bad_alloc&) {
        return kErrOutOfMemory;
    } catch (...) {
        return kErrInitFailed;
    }
}

CProcessType& CProcessGroup::AddProcessType(std::unique_ptr<CProcessType> type) {
    type->group_ = this;
    types_.push_back(std::move(type));
    return *types_.back();
}

const char* CProcessGroup::GetManufacturerNameSet() const noexcept {
    return manufacturerNameSet_.c_str();
}

const char* CProcessGroup::GetProductNameSet() const noexcept {
    return productNameSet_.c_str();
}

bool CProcessGroup::HasGestalt(std::int32_t selector) const noexcept {
    return gestalts_.count(selector) != 0;
}

std::int32_t CProcessGroup::CountEffectTypes() const noexcept {
    return static_cast<std::int32_t>(types_.size());
}

IProcessType* CProcessGroup::GetEffectType(std::int32_t position) noexcept {
    if (position < 0 || position >= CountEffectTypes()) return nullptr;
    return types_[static_cast<std::size_t>(position)].get();
}

std::int32_t CProcessGroup::CountProcesses() const noexcept {
    return static_cast<std::int32_t>(processes_.size());
}

void CProcessGroup::AddProcess(CProcess& process) {
    processes_.push_back(&process);
}

void CProcessGroup::RemoveProcess(CProcess& process) noexcept {
    processes_.erase(std::remove(processes_.begin(), processes_.end(), &process), processes_.end());
}

}  // namespace vorix
