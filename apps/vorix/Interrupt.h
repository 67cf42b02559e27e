#pragma once

#include <string_view>

namespace vorix::cli {

// A signal never leaves a half-written output behind. Every signal that would end the process and
// that it may catch first removes the hidden temporary files of the outputs under way. Ctrl-C
// (SIGINT) and a polite kill (SIGTERM) then end the command at once with one line on the standard
// error and status 2, also while it waits on a pipe or a slow disk; any other such signal (a
// hang-up, a broken pipe, a resource limit, ...) ends the process as that signal does by default.
// A signal the process was started with ignored stays ignored, as a background job expects.

// Main thread, once, from main, before any command runs.
void InstallSignalHandlers();
// Main thread. The command under way, "render", named in the line an interrupt writes.
void SetInterruptedCommand(std::string_view command) noexcept;

// A program that runs the tool in-process may cancel a render without a signal: the render stops
// at the next block and removes its temporary file.

// Any thread. Asks the render under way, or the next one, to stop.
void RequestInterrupt() noexcept;
// Any thread. Withdraws the request, for a program that goes on after a cancelled render.
void ClearInterrupt() noexcept;
// Any thread. Whether a stop has been asked for.
bool InterruptRequested() noexcept;

}  // namespace vorix::cli
