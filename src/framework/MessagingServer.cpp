#include "framework/MessagingServer.h"

#include <cstdlib>
#include <new>

#include "framework/ScopeGuards.h"

namespace vorix {

struct MsgSubscription {
    MsgSubscription* next = nullptr;
    std::int32_t suspendCount = 0;
    DeliveryFunction deliver = nullptr;
    void* subscriber = nullptr;
    void* clientData = nullptr;
    std::int32_t key = 0;
    DetachFunction detach = nullptr;
};

struct MsgClass {
    MsgClass* next = nullptr;
    std::int32_t suspendCount = 0;
    MsgSubscription* subscriptions = nullptr;
    std::int32_t subscriberCount = 0;
    std::uint32_t id = 0;
    bool dying = false;  // set while DestroyMsgClass empties the list
};

struct QueuedMsg {
    static constexpr std::uint32_t kOwnsParam2 = 1;

    QueuedMsg* next = nullptr;
    std::uint32_t flags = 0;
    MsgClass* target = nullptr;
    MsgId msgId = 0;
    MsgParam param1 = 0;
    MsgParam param2 = 0;
};

namespace {

std::int32_t Suspended(std::int32_t count, bool suspend) {
    if (suspend) return count + 1;
    return count > 0 ? count - 1 : 0;
}

// The class count is read afresh for every subscription: a handler that suspends the class
// silences the rest of the walk.
bool CanHear(const MsgClass& msgClass, const MsgSubscription& subscription) {
    return subscription.suspendCount <= 0 && msgClass.suspendCount <= 0;
}

void Deliver(MsgClass* msgClass, MsgSubscription* subscription, MsgId msgId, MsgParam param1,
             MsgParam param2) {
    subscription->deliver(subscription, subscription->subscriber, subscription->key, msgClass,
                          msgId, param1, param2);
}

bool UnlinkSubscription(MsgClass& msgClass, MsgSubscription* subscription) {
    for (MsgSubscription** link = &msgClass.subscriptions; *link != nullptr;
         link = &(*link)->next) {
        if (*link == subscription) {
            *link = subscription->next;
            --msgClass.subscriberCount;
            return true;
        }
    }
    return false;
}

void AppendSubscription(MsgClass& msgClass, MsgSubscription* subscription) {
    MsgSubscription** link = &msgClass.subscriptions;
    while (*link != nullptr)
        link = &(*link)->next;
    subscription->next = nullptr;
    *link = subscription;
    ++msgClass.subscriberCount;
}

// Tells one subscription of a dying class, either by kMsgClassGone or, when it may not hear,
// through its detach function.
void TellGone(MsgClass* msgClass, MsgSubscription* subscription) noexcept {
    try {
        if (CanHear(*msgClass, *subscription)) {
            Deliver(msgClass, subscription, kMsgClassGone, 0, 0);
        } else if (subscription->detach != nullptr) {
            subscription->detach(subscription, subscription->subscriber, subscription->key);
        }
    } catch (...) {
        // The class goes all the same; its destruction runs inside destructors.
    }
}

void FreeOwnedParam(const QueuedMsg& message) {
    if ((message.flags & QueuedMsg::kOwnsParam2) != 0 && message.param2 != 0) {
        std::free(ParamPointer<void>(message.param2));
    }
}

}  // namespace

MessagingServer::~MessagingServer() {
    while (classes_ != nullptr)
        DestroyMsgClass(classes_);
    while (queue_ != nullptr) {
        FreeOwnedParam(*queue_);
        FreeQueuedMsg(queue_);
    }
}

MsgClass* MessagingServer::CreateMsgClass(std::uint32_t id) {
    auto* msgClass = new (std::nothrow) MsgClass();
    if (msgClass == nullptr) return nullptr;
    msgClass->id = id;
    msgClass->next = classes_;
    classes_ = msgClass;
    return msgClass;
}

void MessagingServer::DestroyMsgClass(MsgClass* msgClass) {
    if (msgClass == nullptr) return;
    if (!IsListed(msgClass)) VORIX_THROW(BadMsgClassId);
    msgClass->dying = true;
    while (MsgSubscription* subscription = msgClass->subscriptions) {
        TellGone(msgClass, subscription);
        // The handler may have removed its subscription itself.
        if (UnlinkSubscription(*msgClass, subscription)) delete subscription;
    }
    UnlinkClass(msgClass);
    delete msgClass;
}

MsgSubscription* MessagingServer::AddSubscription(MsgClass* msgClass, DeliveryFunction deliver,
                                                  void* subscriber, std::int32_t key,
                                                  DetachFunction detach) {
    // A subscription taken by a handler of a dying class would keep its destruction going.
    if (msgClass == nullptr || deliver == nullptr || msgClass->dying) {
        VORIX_THROW(AppFrame::BadParameter);
    }
    auto* subscription = new (std::nothrow) MsgSubscription();
    if (subscription == nullptr) return nullptr;
    subscription->deliver = deliver;
    subscription->subscriber = subscriber;
    subscription->key = key;
    subscription->detach = detach;
    subscription->next = msgClass->subscriptions;
    msgClass->subscriptions = subscription;
    ++msgClass->subscriberCount;
    return subscription;
}

void MessagingServer::RemoveSubscription(MsgClass* msgClass, MsgSubscription* subscription) {
    if (msgClass == nullptr || subscription == nullptr) return;
    if (UnlinkSubscription(*msgClass, subscription)) delete subscription;
}

void MessagingServer::MoveSubscriptionToEnd(MsgClass* msgClass, MsgSubscription* subscription) {
    if (msgClass == nullptr || subscription == nullptr) return;
    if (UnlinkSubscription(*msgClass, subscription)) AppendSubscription(*msgClass, subscription);
}

void MessagingServer::SendToClass(MsgClass* msgClass, MsgId msgId, MsgParam param1, MsgParam param2,
                                  MsgSubscription* excluded) {
    if (msgClass == nullptr) return;
    MsgSubscription* subscription = msgClass->subscriptions;
    while (subscription != nullptr) {
        // Read ahead, so that a handler may remove its own subscription.
        MsgSubscription* next = subscription->next;
        if (subscription != excluded && CanHear(*msgClass, *subscription)) {
            Deliver(msgClass, subscription, msgId, param1, param2);
        }
        subscription = next;
    }
}

void MessagingServer::SendToSubscription(MsgClass* msgClass, MsgSubscription* subscription,
                                         MsgId msgId, MsgParam param1, MsgParam param2) {
    if (msgClass == nullptr || subscription == nullptr) return;
    if (CanHear(*msgClass, *subscription)) Deliver(msgClass, subscription, msgId, param1, param2);
}

void MessagingServer::PostToClass(MsgClass* msgClass, MsgId msgId, MsgParam param1, MsgParam param2,
                                  bool ownsParam2) {
    auto* message = new (std::nothrow) QueuedMsg();
    if (message == nullptr) {
        // The queue took charge of the block even though it could not keep the message.
        if (ownsParam2 && param2 != 0) std::free(ParamPointer<void>(param2));
        return;
    }
    message->flags = ownsParam2 ? QueuedMsg::kOwnsParam2 : 0;
    message->target = msgClass;
    message->msgId = msgId;
    message->param1 = param1;
    message->param2 = param2;
    QueuedMsg** link = &queue_;
    while (*link != nullptr)
        link = &(*link)->next;
    *link = message;
}

void MessagingServer::DeliverPosted() {
    while (QueuedMsg* message = queue_) {
        // The record stays queued while it is delivered; it goes afterwards even if a handler
        // throws, so that one failing message cannot come back at every beat.
        ScopeExit finish([this, message] {
            FreeOwnedParam(*message);
            FreeQueuedMsg(message);
        });
        SendToClass(message->target, message->msgId, message->param1, message->param2, nullptr);
    }
}

MsgClass* MessagingServer::SuspendMsgClass(MsgClass* msgClass, bool suspend) {
    if (msgClass != nullptr) msgClass->suspendCount = Suspended(msgClass->suspendCount, suspend);
    return msgClass;
}

MsgSubscription* MessagingServer::SuspendSubscription(MsgSubscription* subscription, bool suspend) {
    if (subscription != nullptr) {
        subscription->suspendCount = Suspended(subscription->suspendCount, suspend);
    }
    return subscription;
}

void* MessagingServer::GetClientData(const MsgSubscription* subscription) {
    return subscription != nullptr ? subscription->clientData : nullptr;
}

void MessagingServer::SetClientData(MsgSubscription* subscription, void* clientData) {
    if (subscription != nullptr) subscription->clientData = clientData;
}

bool MessagingServer::IsSuspended(const MsgClass* msgClass) {
    return msgClass != nullptr && msgClass->suspendCount > 0;
}

bool MessagingServer::IsSuspended(const MsgSubscription* subscription) {
    return subscription != nullptr && subscription->suspendCount > 0;
}

std::int32_t MessagingServer::GetSubscriberCount(const MsgClass* msgClass) {
    return msgClass != nullptr ? msgClass->subscriberCount : 0;
}

std::uint32_t MessagingServer::GetClassId(const MsgClass* msgClass) {
    return msgClass != nullptr ? msgClass->id : 0;
}

bool MessagingServer::IsListed(const MsgClass* msgClass) const {
    for (const MsgClass* listed = classes_; listed != nullptr; listed = listed->next) {
        if (listed == msgClass) return true;
    }
    return false;
}

void MessagingServer::UnlinkClass(MsgClass* msgClass) {
    for (MsgClass** link = &classes_; *link != nullptr; link = &(*link)->next) {
        if (*link == msgClass) {
            *link = msgClass->next;
            return;
        }
    }
}

void MessagingServer::FreeQueuedMsg(QueuedMsg* message) {
    // By search from the head: a nested call may have changed the queue meanwhile.
    for (QueuedMsg** link = &queue_; *link != nullptr; link = &(*link)->next) {
        if (*link == message) {
            *link = message->next;
            break;
        }
    }
    delete message;
}

}  // namespace vorix
