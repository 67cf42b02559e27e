#pragma once

#include "framework/FourCC.h"
#include "framework/MessageTypes.h"

namespace vorix {

// What the engine announces on its class 'flrA'. The first value is 0 unless told; the second is
// the filter concerned (a record pointer), or 0.
inline constexpr MsgClassRef kFilterMsgClass = static_cast<MsgClassRef>(FourCC("flrA"));

inline constexpr MsgId kSaveAttributesMsg = static_cast<MsgId>(FourCC("satt"));  // 0, 0
inline constexpr MsgId kNewSetMsg = static_cast<MsgId>(FourCC("nset"));          // 0, 0
inline constexpr MsgId kFilterAddedMsg = static_cast<MsgId>(FourCC("_new"));
inline constexpr MsgId kFilterDeletedMsg = static_cast<MsgId>(FourCC("del "));
inline constexpr MsgId kChannelDeletedMsg = static_cast<MsgId>(FourCC("cdel"));
inline constexpr MsgId kFilterEnabledMsg = static_cast<MsgId>(FourCC("enab"));
inline constexpr MsgId kFilterSelectedMsg = static_cast<MsgId>(FourCC("selt"));  // 1 or 0
inline constexpr MsgId kFilterEditMsg = static_cast<MsgId>(FourCC("edit"));
inline constexpr MsgId kSoloMsg = static_cast<MsgId>(FourCC("solo"));            // filter or 0
inline constexpr MsgId kFilterSplitMsg = static_cast<MsgId>(FourCC("splt"));     // new half
inline constexpr MsgId kFilterCombinedMsg = static_cast<MsgId>(FourCC("comb"));
inline constexpr MsgId kHostParameterMsg = static_cast<MsgId>(FourCC("eprm"));   // bit
inline constexpr MsgId kEditorParameterMsg = static_cast<MsgId>(FourCC("parm")); // bit

// What the automation slots announce on their class 'gene'.
inline constexpr MsgClassRef kControlSlotMsgClass = static_cast<MsgClassRef>(FourCC("gene"));
inline constexpr MsgId kSlotAssignedMsg = static_cast<MsgId>(FourCC("asso"));  // slot or -1
inline constexpr MsgId kSlotsClearedMsg = static_cast<MsgId>(FourCC("disa"));  // -1, 0

}  // namespace vorix
