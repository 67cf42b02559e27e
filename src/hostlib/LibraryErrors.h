#pragma once

#include <cstdint>

namespace vorix {

// Result codes of the plug-in library's host entries: 0 for success, negative for a failure.
// Only the out-of-memory code is fixed by the host; the others are the library's own and stay
// clear of it.
enum LibraryError : std::int32_t {
    kNoErr = 0,
    kErrOutOfMemory = -7003,
    kErrBadIndex = -7100,        // no control, meter or type of that number
    kErrBadArgument = -7101,     // a null pointer, a negative size, an unknown protocol version
    kErrUnknownChunk = -7102,    // the process keeps no chunk of that id
    kErrBadChunk = -7103,        // chunk data truncated, oversized or not of the expected form
    kErrBufferTooSmall = -7104,  // the caller's buffer cannot hold the chunk; the size is told
    kErrBadText = -7105,         // a text that does not read as a value of the control
    kErrInitFailed = -7106,      // the process could not be made or its EffectInit failed
    kErrFailed = -7107,          // the plug-in raised an exception in an operation
    kErrNoView = -7108,          // the process has no view to draw
    kErrNoRenderer = -7109,      // the process is connected to no render routine
};

}  // namespace vorix
