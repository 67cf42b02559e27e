#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>

#include "framework/FourCC.h"

namespace vorix {

// The words of a message besides its class. Parameters are opaque: by the convention of each
// message id they hold a value or a pointer, so they are pointer-sized.
using MsgId = std::int32_t;
using MsgParam = std::intptr_t;

// A publisher's key for one of its message classes; unique within the publisher only.
using MsgClassRef = std::int32_t;

// Message ids that the framework itself sends.
inline constexpr MsgId kMsgClassGone = -32768;          // the class is being destroyed; 0, 0
inline constexpr MsgId kControlValueChanged = 0x20000;  // new value, the control
inline constexpr MsgId kControlPressed = 0x20001;       // value, the control
inline constexpr MsgId kControlReleased = 0x20002;      // value, the control
inline constexpr MsgId kControlDragged = 0x20003;       // value, the control
inline constexpr MsgId kBatchBegun = 0x20010;           // a run of related messages follows; 0, 0
inline constexpr MsgId kBatchEnded = 0x20011;           // the run is over: time to rebuild; 0, 0

// The class that every control container publishes for its single change signal.
inline constexpr MsgClassRef kContainerChangeRef = static_cast<MsgClassRef>(FourCC("ccac"));

// A pointer as a message parameter, and back. Any thread.
template <typename T>
MsgParam PointerParam(T* pointer) noexcept {
    return reinterpret_cast<MsgParam>(pointer);
}
template <typename T>
T* ParamPointer(MsgParam param) noexcept {
    return reinterpret_cast<T*>(param);
}

// A copy of plain data in a heap block that a posted message may own: the queue frees it with
// std::free after delivery. Null when memory is short. Main thread.
template <typename T>
MsgParam NewOwnedParam(const T& value) noexcept {
    static_assert(std::is_trivially_copyable_v<T>, "an owned parameter is freed, not destroyed");
    void* block = std::malloc(sizeof(T));
    if (block != nullptr) std::memcpy(block, &value, sizeof(T));
    return PointerParam(block);
}

}  // namespace vorix
