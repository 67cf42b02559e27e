#pragma once

#include <cstdint>
#include <map>

#include "framework/Exceptions.h"
#include "framework/MessageTypes.h"
#include "framework/MessagingServer.h"
#include "framework/PluginServicesClient.h"

namespace vorix {

// Base of an object that hears message classes through member functions of its own class T
// (which derives publicly from MessageSubscriber<T>), each subscription under a key of T's
// choosing. While a handler runs, mCurKey, mCurClass, mCurParam1 and mCurParam2 describe the
// message. All operations are main thread only and must not be used from the audio thread.
template <typename T>
class MessageSubscriber : public PluginServicesClient {
  public:
    using Handler = void (T::*)(MsgId msgId);

    // Subscribe with a key in use and no replacement.
    class BadSubRef : public AppFrame::BadParameter {
      public:
        using BadParameter::BadParameter;
    };

    struct SubscriptionEntry {
        std::int32_t key;
        MsgSubscription* subscription;
        MsgClass* msgClass;
        Handler handler;
    };

    // Main thread. Subscribes to nothing yet.
    explicit MessageSubscriber(PluginServices* services) noexcept
        : PluginServicesClient(services) {}

    // Main thread. Removes every subscription, so that no message can reach a dead object.
    ~MessageSubscriber() override {
        while (!entries_.empty())
            RemoveEntry(entries_.begin());
    }

    MessageSubscriber(const MessageSubscriber&) = delete;
    MessageSubscriber& operator=(const MessageSubscriber&) = delete;

    // Main thread. Binds `handler` to the class under `key`. With `replace` an old subscription
    // of the key goes first; without it a key in use raises BadSubRef.
    void Subscribe(MsgClass* msgClass, std::int32_t key, Handler handler, bool replace) {
        if (replace) Unsubscribe(key);
        if (entries_.contains(key)) VORIX_THROW(BadSubRef);
        MsgSubscription* subscription = GetMessagingServer().AddSubscription(
            msgClass, &Deliver, static_cast<MessageSubscriber*>(this), key, &Detach);
        auto& entry = entries_[key];
        entry = SubscriptionEntry{key, subscription, msgClass, handler};
        MessagingServer::SetClientData(subscription, &entry);
    }

    // Main thread. Ends the subscription of `key`; an unknown key is a no-op.
    void Unsubscribe(std::int32_t key) {
        const auto found = entries_.find(key);
        if (found != entries_.end()) RemoveEntry(found);
    }

    // Main thread. Suspends (or resumes) the subscription of `key`; suspensions nest. An unknown
    // key is a no-op.
    void Suspend(std::int32_t key, bool suspend) {
        const auto found = entries_.find(key);
        if (found == entries_.end()) return;
        GetMessagingServer().SuspendSubscription(found->second.subscription, suspend);
    }

    // Main thread. Makes the subscription of `key` hear after every other one of its class. An
    // unknown key is a no-op.
    void MoveToEnd(std::int32_t key) {
        const auto found = entries_.find(key);
        if (found == entries_.end()) return;
        const SubscriptionEntry& entry = found->second;
        GetMessagingServer().MoveSubscriptionToEnd(entry.msgClass, entry.subscription);
    }

    // Main thread. Whether `key` names a live subscription.
    bool IsSubscribed(std::int32_t key) const { return entries_.contains(key); }

  protected:
    std::int32_t mCurKey = 0;
    MsgClass* mCurClass = nullptr;
    MsgParam mCurParam1 = 0;
    MsgParam mCurParam2 = 0;

  private:
    using EntryMap = std::map<std::int32_t, SubscriptionEntry>;

    void RemoveEntry(typename EntryMap::iterator found) {
        const SubscriptionEntry entry = found->second;
        entries_.erase(found);
        GetMessagingServer().RemoveSubscription(entry.msgClass, entry.subscription);
    }

    // Forgets the entry of a subscription that the server frees, unless the key has been bound
    // anew meanwhile.
    void ForgetEntry(MsgSubscription* subscription, std::int32_t key) noexcept {
        const auto found = entries_.find(key);
        if (found != entries_.end() && found->second.subscription == subscription) {
            entries_.erase(found);
        }
    }

    static void Deliver(MsgSubscription* subscription, void* subscriber, std::int32_t key,
                        MsgClass* msgClass, MsgId msgId, MsgParam param1, MsgParam param2) {
        if (subscriber == nullptr) return;
        auto* self = static_cast<MessageSubscriber*>(subscriber);
        // Null while T is not (or no longer) a whole object: then nobody is called.
        T* target = dynamic_cast<T*>(self);
        const auto* entry =
            static_cast<const SubscriptionEntry*>(MessagingServer::GetClientData(subscription));
        const Handler handler = entry != nullptr ? entry->handler : nullptr;
        self->mCurKey = key;
        self->mCurClass = msgClass;
        self->mCurParam1 = param1;
        self->mCurParam2 = param2;
        // The server frees the subscription after kMsgClassGone, so its entry goes first: the
        // handler may then bind the key anew, or even delete its object.
        if (msgId == kMsgClassGone) self->ForgetEntry(subscription, key);
        if (target != nullptr && handler != nullptr) (target->*handler)(msgId);
    }

    static void Detach(MsgSubscription* subscription, void* subscriber, std::int32_t key) {
        if (subscriber != nullptr)
            static_cast<MessageSubscriber*>(subscriber)->ForgetEntry(subscription, key);
    }

    EntryMap entries_;
};

}  // namespace vorix
