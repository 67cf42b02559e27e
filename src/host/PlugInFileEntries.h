#pragma once

#include <cstdint>
#include <memory>

#include "core/ZORPluginMetaClass.h"

namespace vorix {

// What the plug-in file does when the host loads, opens, closes and unloads it: one group for the
// whole file, made at the first open and destroyed at the last close, and the attach step that
// registers the open and close routines with the host. The exported entries forward here. Main
// thread, all of them; the host serialises them.

// Makes the group and initialises it. The low 16 bits of the answer are the error: 0 for
// success, 58533 (-7003 as a signed 16-bit number) when memory ran out.
std::int32_t NewPlugInGroup(std::int32_t unused) noexcept;

// The host's open entry: -1 for any version but the one the host passes, else PlugInOpen's
// answer.
std::int32_t OpenPlugInFile(std::int32_t version) noexcept;
// The host's close entry.
void ClosePlugInFile() noexcept;

// Counts an open; the first one makes the group and registers the resources file. Answers 0, or
// an error in the low 16 bits after which no group stands.
std::int32_t PlugInOpen() noexcept;
// Counts a close; the one that balances the first open destroys the group and releases the
// resources file. A close without an open does nothing.
void PlugInClose() noexcept;

// Load time: the product's description is made by `maker` from now on, and the open and close
// routines are registered with the loading host, or, when it offers no registration, the file is
// opened at once and closed again when it is unloaded. `addressInFile` is any address inside
// the plug-in file, to find its path.
void AttachPlugInFile(MetaClassMaker maker, const void* addressInFile) noexcept;

}  // namespace vorix
