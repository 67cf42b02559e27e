#pragma once

#include <cstdint>

namespace vorix {

class PluginCore;

// The one display of messages for the user: a first text (the main line), a second (the detail
// line), a third, and a kind (2 for every settings message). While the core has an open editor,
// the message is a panel over the editor's frames; otherwise it goes to the service that the
// core's host layer names, or to the process-wide default service when there is no core or the
// host names none. Null texts are empty. Any exception of the display is swallowed, so this
// can be called from every catch handler. Main thread; never from the audio thread.
void ReportError(PluginCore* core, const char* first, const char* second, const char* third,
                 std::int32_t kind) noexcept;

}  // namespace vorix
