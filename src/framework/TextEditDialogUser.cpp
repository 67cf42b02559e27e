#include "framework/TextEditDialogUser.h"

namespace vorix {

TextEditDialogUser::TextEditDialogUser() : handle_(std::make_shared<TextEditDialogUser*>(this)) {}

TextEditDialogUser::~TextEditDialogUser() {
    DetachFromProxies();
}

bool TextEditDialogUser::IsTextValid(const std::string& /*text*/) {
    return true;
}

void TextEditDialogUser::DetachFromProxies() noexcept {
    if (handle_ != nullptr) *handle_ = nullptr;
}

TextEditDialogUserProxy::TextEditDialogUserProxy(TextEditDialogUser* target)
    : target_(target != nullptr ? target->handle_ : nullptr) {}

bool TextEditDialogUserProxy::IsTextValid(const std::string& text) {
    return HasTarget() && (*target_)->IsTextValid(text);
}

void TextEditDialogUserProxy::TextEditDone(const std::string* text) {
    if (HasTarget()) (*target_)->TextEditDone(text);
}

}  // namespace vorix
