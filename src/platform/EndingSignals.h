#pragma once

#include <string>

namespace vorix {

// No signal leaves a half-written file of a tool behind. Every signal that would end the process
// and that it may catch first removes the temporary files enlisted here, then ends the process as
// that signal did before (by default, or through a sanitizer's handler). A signal the process was
// started with ignored stays ignored.

// Runs inside the handler once the files are gone, told whether there were any; it may end the
// process itself, and may call only what is async-signal-safe.
using EndingSignalHook = void (*)(int signal, bool removedFiles) noexcept;

// Main thread, once, from main.
void InstallEndingSignalHandlers(EndingSignalHook hook = nullptr);

// The temporary files a handler removes. Enlisting answers a slot, or -1 when all are taken (the
// file is then only unprotected); releasing takes the file off the list. Any thread; the handler
// side is async-signal-safe.
int EnlistTemporaryFile(const std::string& path) noexcept;
void ReleaseTemporaryFile(int slot) noexcept;

// Removes every enlisted file and answers whether there was one. Any thread, and signal handlers.
bool RemoveTemporaryFiles() noexcept;

}  // namespace vorix
