#pragma once

#include <string>

namespace vorix {

// No signal leaves a half-written file of the host behind. Every signal that would end the
// process and that it may catch first removes the temporary files of the FileReplacements under
// way, then ends the process as that signal does by default. A signal the process was started
// with ignored stays ignored.

// Main thread, once, from main.
void InstallEndingSignalHandlers();

// The temporary files a handler removes. Enlisting answers a slot, or -1 when all are taken (the
// file is then only unprotected); releasing takes the file off the list. Any thread; the handler
// side is async-signal-safe.
int EnlistTemporaryFile(const std::string& path) noexcept;
void ReleaseTemporaryFile(int slot) noexcept;

}  // namespace vorix
