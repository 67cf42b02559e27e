#include "framework/MessagePublisher.h"

#include <cstdlib>
#include <stdexcept>

namespace vorix {

MessagePublisher::MessagePublisher(PluginServices* services) noexcept
    : PluginServicesClient(services) {}

MessagePublisher::~MessagePublisher() {
    // Named explicitly: in a destructor only this class's Unpublish can run anyway.
    while (!classes_.empty())
        MessagePublisher::Unpublish(classes_.begin()->first);
}

MsgClass* MessagePublisher::Publish(MsgClassRef ref) {
    if (classes_.contains(ref)) throw std::invalid_argument(kPublishNotUniqueText);
    MsgClass* msgClass = GetMessagingServer().CreateMsgClass(static_cast<std::uint32_t>(ref));
    classes_.emplace(ref, msgClass);
    return msgClass;
}

void MessagePublisher::Unpublish(MsgClassRef ref) {
    MsgClass* msgClass = Lookup(ref);
    // The entry stays while subscribers hear kMsgClassGone, so they may still name the class.
    GetMessagingServer().DestroyMsgClass(msgClass);
    classes_.erase(ref);
    batchDepths_.erase(ref);
}

void MessagePublisher::Send(MsgClassRef ref, MsgId msgId, MsgParam param1, MsgParam param2,
                            MsgSubscription* excluded) {
    GetMessagingServer().SendToClass(Lookup(ref), msgId, param1, param2, excluded);
}

void MessagePublisher::Post(MsgClassRef ref, MsgId msgId, MsgParam param1, MsgParam param2,
                            bool ownsParam2) {
    MessagingServer& server = GetMessagingServer();
    const auto entry = classes_.find(ref);
    if (entry == classes_.end()) {
        // An owned block passes to the queue with the call, whether or not the call succeeds.
        if (ownsParam2 && param2 != 0) std::free(ParamPointer<void>(param2));
        VORIX_THROW(BadMsgClassRef);
    }
    server.PostToClass(entry->second, msgId, param1, param2, ownsParam2);
}

void MessagePublisher::SuspendClass(bool suspend, MsgClassRef ref) {
    GetMessagingServer().SuspendMsgClass(Lookup(ref), suspend);
}

MsgClass* MessagePublisher::GetMsgClass(MsgClassRef ref) const {
    const auto entry = classes_.find(ref);
    return entry != classes_.end() ? entry->second : nullptr;
}

void MessagePublisher::BeginBatch(MsgClassRef ref) {
    MsgClass* msgClass = Lookup(ref);
    if (batchDepths_[ref]++ == 0) GetMessagingServer().SendToClass(msgClass, kBatchBegun, 0, 0, nullptr);
}

void MessagePublisher::EndBatch(MsgClassRef ref) {
    MsgClass* msgClass = Lookup(ref);
    const auto depth = batchDepths_.find(ref);
    if (depth == batchDepths_.end()) return;  // a surplus end is harmless
    if (--depth->second > 0) return;
    batchDepths_.erase(depth);
    GetMessagingServer().SendToClass(msgClass, kBatchEnded, 0, 0, nullptr);
}

bool MessagePublisher::IsBatching(MsgClassRef ref) const {
    return batchDepths_.contains(ref);
}

MsgClass* MessagePublisher::Lookup(MsgClassRef ref) const {
    const auto entry = classes_.find(ref);
    if (entry == classes_.end()) VORIX_THROW(BadMsgClassRef);
    return entry->second;
}

}  // namespace vorix
