#pragma once

#include "framework/FourCC.h"
#include "framework/MessageTypes.h"

namespace vorix {

// The message classes that every plug-in core publishes, and their messages. All carry 0, 0.

// The host changed the audio configuration.
inline constexpr MsgClassRef kConfigMsgClass = static_cast<MsgClassRef>(FourCC("cfg "));
inline constexpr MsgId kSampleRateChangedMsg = static_cast<MsgId>(FourCC("srte"));
inline constexpr MsgId kBlockSizeChangedMsg = static_cast<MsgId>(FourCC("blok"));

// The clip indicators were reset.
inline constexpr MsgClassRef kClipMsgClass = static_cast<MsgClassRef>(FourCC("clip"));
inline constexpr MsgId kClipClearedMsg = static_cast<MsgId>(FourCC("clcl"));

}  // namespace vorix
