#pragma once

#include <cstdint>

#include "framework/Exceptions.h"
#include "framework/MessageTypes.h"

namespace vorix {

// Handles of the server's records; only the server looks inside.
struct MsgClass;
struct MsgSubscription;
struct QueuedMsg;

// Hands one message to a subscriber: the subscription, the subscriber object, the subscription's
// key, the class, the message id, parameter 1, parameter 2.
using DeliveryFunction = void (*)(MsgSubscription* subscription, void* subscriber, std::int32_t key,
                                  MsgClass* msgClass, MsgId msgId, MsgParam param1,
                                  MsgParam param2);

// Tells a subscriber that its subscription was freed with its class while it was suspended and
// so heard no kMsgClassGone: the subscriber must forget the handle. Must not throw.
using DetachFunction = void (*)(MsgSubscription* subscription, void* subscriber, std::int32_t key);

// One instance's publish/subscribe bus. Delivery is a nested call on the sender's stack, or, for
// posted messages, from the editor's pump. No locks: everything here is main thread only, and
// nothing here may be touched from the audio thread.
class MessagingServer {
  public:
    // A class handed to DestroyMsgClass is not one of this server's.
    class BadMsgClassId : public AppFrame::Exception {
      public:
        using Exception::Exception;
    };

    MessagingServer() = default;

    // Main thread. Destroys every class left, subscribers hearing kMsgClassGone, and drops the
    // queue undelivered, freeing owned parameters.
    ~MessagingServer();

    MessagingServer(const MessagingServer&) = delete;
    MessagingServer& operator=(const MessagingServer&) = delete;

    // Main thread. A new class carrying `id`, or null when memory is short.
    MsgClass* CreateMsgClass(std::uint32_t id);

    // Main thread. Each subscription hears kMsgClassGone unless it or the class is suspended, and
    // is freed; then the class. Null is a no-op; a foreign class raises BadMsgClassId before
    // anything is touched. A handler's exception is swallowed: this runs in destructors.
    void DestroyMsgClass(MsgClass* msgClass);

    // Main thread. Subscribes at the head of the class's list, so the newest subscriber hears
    // first. Null when memory is short. A null class or function, or a class that is being
    // destroyed, raises AppFrame::BadParameter.
    MsgSubscription* AddSubscription(MsgClass* msgClass, DeliveryFunction deliver, void* subscriber,
                                     std::int32_t key, DetachFunction detach = nullptr);

    // Main thread. Unlinks and frees; a null subscription or one not on the list is a no-op.
    void RemoveSubscription(MsgClass* msgClass, MsgSubscription* subscription);

    // Main thread. Moves the subscription to the tail, to hear after all others; no-op if absent.
    void MoveSubscriptionToEnd(MsgClass* msgClass, MsgSubscription* subscription);

    // Main thread. Delivers now, newest subscription first, skipping `excluded` and anything
    // suspended. A handler's exception passes out and leaves the rest undelivered. A handler may
    // remove its own subscription, never the one after it, and must not destroy the class.
    void SendToClass(MsgClass* msgClass, MsgId msgId, MsgParam param1, MsgParam param2,
                     MsgSubscription* excluded);

    // Main thread. Delivers now to one subscription, under the same suspension tests.
    void SendToSubscription(MsgClass* msgClass, MsgSubscription* subscription, MsgId msgId,
                            MsgParam param1, MsgParam param2);

    // Main thread. Queues for the pump. With `ownsParam2` the queue frees parameter 2 with
    // std::free after delivery (see NewOwnedParam). Dropped silently when memory is short.
    void PostToClass(MsgClass* msgClass, MsgId msgId, MsgParam param1, MsgParam param2,
                     bool ownsParam2);

    // Main thread, from the pump only, never from a handler. Delivers the queue first in, first
    // out, including what handlers post meanwhile; suspension is judged at delivery.
    void DeliverPosted();

    // Main thread. Suspensions nest; a surplus resume is harmless. Returns the argument.
    MsgClass* SuspendMsgClass(MsgClass* msgClass, bool suspend);
    MsgSubscription* SuspendSubscription(MsgSubscription* subscription, bool suspend);

    // Main thread. The word a subscriber attaches to its subscription.
    static void* GetClientData(const MsgSubscription* subscription);
    static void SetClientData(MsgSubscription* subscription, void* clientData);

    // Main thread. Whether the record's suspension count is above 0.
    static bool IsSuspended(const MsgClass* msgClass);
    static bool IsSuspended(const MsgSubscription* subscription);

    // Main thread. The number of subscriptions, and the id given at creation.
    static std::int32_t GetSubscriberCount(const MsgClass* msgClass);
    static std::uint32_t GetClassId(const MsgClass* msgClass);

  private:
    bool IsListed(const MsgClass* msgClass) const;
    void UnlinkClass(MsgClass* msgClass);
    void FreeQueuedMsg(QueuedMsg* message);

    MsgClass* classes_ = nullptr;
    QueuedMsg* queue_ = nullptr;
};

}  // namespace vorix
