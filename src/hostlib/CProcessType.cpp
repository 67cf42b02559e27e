#include "hostlib/CProcessType.h"

namespace vorix {

CProcessType::~CProcessType() = default;

bool CProcessType::HasGestalt(std::int32_t selector) const noexcept {
    return settings_.gestalts.count(selector) != 0;
}

const char* CProcessType::GetPageTableName() const noexcept {
    return settings_.pageTableName.c_str();
}

}  // namespace vorix
