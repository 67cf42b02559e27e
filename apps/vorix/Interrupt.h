#pragma once

namespace vorix::cli {

// Ctrl-C and a polite kill end a long render cleanly: the render stops at the next block and
// removes its temporary file instead of dying with it in the folder. A program that runs the tool
// in-process may cancel a render the same way.

// Main thread, once, from main. Catches SIGINT and SIGTERM.
void InstallInterruptHandlers();
// Any thread, and signal handlers. Asks the render under way, or the next one, to stop.
void RequestInterrupt() noexcept;
// Any thread. Withdraws the request, for a program that goes on after a cancelled render.
void ClearInterrupt() noexcept;
// Any thread. Whether a stop has been asked for.
bool InterruptRequested() noexcept;

}  // namespace vorix::cli
