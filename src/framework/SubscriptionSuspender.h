#pragma once

#include <cstdint>

#include "framework/MessageSubscriber.h"

namespace vorix {

// Silences one subscription for the length of a scope, so that an object can change a value
// without hearing its own echo. The lookup goes by key on both ends: a key that is unknown, or
// that the class's destruction has freed meanwhile, does nothing. Main thread only.
template <typename T>
class SubscriptionSuspender {
  public:
    SubscriptionSuspender(MessageSubscriber<T>& subscriber, std::int32_t key)
        : subscriber_(subscriber), key_(key) {
        subscriber_.Suspend(key_, true);
    }
    ~SubscriptionSuspender() { subscriber_.Suspend(key_, false); }

    SubscriptionSuspender(const SubscriptionSuspender&) = delete;
    SubscriptionSuspender& operator=(const SubscriptionSuspender&) = delete;

  private:
    MessageSubscriber<T>& subscriber_;
    std::int32_t key_;
};

}  // namespace vorix
