#pragma once

#include <memory>
#include <string>

namespace vorix {

// Whoever asks the editor for a line of text: the editor's text field asks it whether a text may
// be taken and tells it how the edit ended. Editor thread.
class TextEditDialogUser {
  public:
    TextEditDialogUser();
    virtual ~TextEditDialogUser();

    TextEditDialogUser(const TextEditDialogUser&) = delete;
    TextEditDialogUser& operator=(const TextEditDialogUser&) = delete;

    // Editor thread. Whether the field may close on `text`; a refused text stays in the field.
    virtual bool IsTextValid(const std::string& text);
    // Editor thread. The edit is over: the text typed, or null when it was cancelled.
    virtual void TextEditDone(const std::string* text) = 0;

  protected:
    // Editor thread. From now on no proxy reaches this object: a subclass calls it first thing
    // in its destructor, before its own parts are gone.
    void DetachFromProxies() noexcept;

  private:
    friend class TextEditDialogUserProxy;

    // The one pointer through which proxies reach this object; cleared when it dies.
    std::shared_ptr<TextEditDialogUser*> handle_;
};

// Stands for a TextEditDialogUser that may die while the field is open: the field holds the
// proxy, and once the target is gone the proxy answers false and tells nobody. Editor thread.
class TextEditDialogUserProxy : public TextEditDialogUser {
  public:
    // Editor thread. `target` may be null: a proxy to nobody.
    explicit TextEditDialogUserProxy(TextEditDialogUser* target);

    bool IsTextValid(const std::string& text) override;
    void TextEditDone(const std::string* text) override;

    // Editor thread. Whether the target still lives.
    bool HasTarget() const noexcept { return target_ != nullptr && *target_ != nullptr; }

  private:
    std::shared_ptr<TextEditDialogUser*> target_;
};

}  // namespace vorix
