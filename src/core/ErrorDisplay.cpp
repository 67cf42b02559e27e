#include "core/ErrorDisplay.h"

#include <string_view>

#include "core/ErrorMessageService.h"
#include "core/PluginCore.h"
#include "core/PluginPlatform.h"
#include "core/PluginUIRoot.h"

namespace vorix {
namespace {

std::string_view TextOf(const char* text) {
    return text != nullptr ? std::string_view(text) : std::string_view();
}

ErrorMessageService& ServiceFor(const PluginCore* core) {
    const PluginPlatform* platform = core != nullptr ? core->GetPlatform() : nullptr;
    ErrorMessageService* service =
        platform != nullptr ? platform->GetErrorMessageService() : nullptr;
    return service != nullptr ? *service : DefaultErrorMessageService();
}

}  // namespace

void ReportError(PluginCore* core, const char* first, const char* second, const char* third,
                 std::int32_t kind) noexcept {
    try {
        // An open editor shows the message itself, over its frames.
        PluginUIRoot* editor = core != nullptr ? core->GetEditor() : nullptr;
        if (editor != nullptr && editor->IsOpen() && editor->GetRootFrame() != nullptr) {
            editor->ShowError(TextOf(first), TextOf(second), TextOf(third), kind);
            return;
        }
        ServiceFor(core).ShowError(TextOf(first), TextOf(second), TextOf(third), kind);
    } catch (...) {
        // A display that fails has nowhere to tell of it.
    }
}

}  // namespace vorix
