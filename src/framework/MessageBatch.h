#pragma once

#include "framework/MessagePublisher.h"

namespace vorix {

// Holds a batch bracket of one message class for a scope (MessagePublisher::BeginBatch). Main
// thread only.
class MessageBatch {
  public:
    MessageBatch(MessagePublisher& publisher, MsgClassRef ref) : publisher_(publisher), ref_(ref) {
        publisher_.BeginBatch(ref_);
    }
    // A subscriber that throws on the closing message cannot be answered from a destructor; the
    // bracket is closed all the same, so the run never stays open.
    ~MessageBatch() {
        try {
            publisher_.EndBatch(ref_);
        } catch (...) {
        }
    }

    MessageBatch(const MessageBatch&) = delete;
    MessageBatch& operator=(const MessageBatch&) = delete;

  private:
    MessagePublisher& publisher_;
    MsgClassRef ref_;
};

}  // namespace vorix
