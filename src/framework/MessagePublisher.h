#pragma once

#include <map>

#include "framework/MessageTypes.h"
#include "framework/MessagingServer.h"
#include "framework/PluginServicesClient.h"

namespace vorix {

// Base of an object that owns message classes, each under a small key of its own choosing.
// All operations are main thread only and must not be used from the audio thread.
class MessagePublisher : public PluginServicesClient {
  public:
    // A class ref that the publisher has not published.
    class BadMsgClassRef : public AppFrame::BadParameter {
      public:
        using BadParameter::BadParameter;
    };

    // Main thread. Publishes nothing yet.
    explicit MessagePublisher(PluginServices* services) noexcept;

    // Main thread. Unpublishes every class, smallest ref first; subscribers hear kMsgClassGone.
    ~MessagePublisher() override;

    MessagePublisher(const MessagePublisher&) = delete;
    MessagePublisher& operator=(const MessagePublisher&) = delete;

    // Main thread. Makes the class of `ref`; a ref in use raises std::invalid_argument with
    // kPublishNotUniqueText and leaves the existing class as it was.
    virtual MsgClass* Publish(MsgClassRef ref);

    // Main thread. Destroys the class, subscribers hearing kMsgClassGone; raises BadMsgClassRef
    // for an unknown ref.
    virtual void Unpublish(MsgClassRef ref);

    // Main thread. Delivers now to every subscriber but `excluded`; raises BadMsgClassRef for an
    // unknown ref. A handler's exception passes out to the caller.
    virtual void Send(MsgClassRef ref, MsgId msgId, MsgParam param1, MsgParam param2,
                      MsgSubscription* excluded);

    // Main thread. Queues for the pump; with `ownsParam2` the queue frees parameter 2 (see
    // NewOwnedParam), even when the call fails. Raises BadMsgClassRef for an unknown ref.
    virtual void Post(MsgClassRef ref, MsgId msgId, MsgParam param1, MsgParam param2,
                      bool ownsParam2);

    // Main thread. Suspends (or resumes) the whole class; the flag comes first. Raises
    // BadMsgClassRef for an unknown ref.
    virtual void SuspendClass(bool suspend, MsgClassRef ref);

    // Main thread. The class of `ref`, for subscribers to find; null for an unknown ref.
    MsgClass* GetMsgClass(MsgClassRef ref) const;

    // Main thread. Brackets a run of messages on the class: the outermost bracket sends
    // kBatchBegun and kBatchEnded, inner ones nothing, so that a subscriber can put off a costly
    // rebuild until the run is over. Raise BadMsgClassRef for an unknown ref. MessageBatch holds
    // a bracket for a scope.
    void BeginBatch(MsgClassRef ref);
    void EndBatch(MsgClassRef ref);
    // Main thread. Whether a bracket of the class is open.
    bool IsBatching(MsgClassRef ref) const;

  private:
    MsgClass* Lookup(MsgClassRef ref) const;

    std::map<MsgClassRef, MsgClass*> classes_;
    std::map<MsgClassRef, std::int32_t> batchDepths_;
};

// The text of the failure of Publish with a ref in use.
inline constexpr const char* kPublishNotUniqueText =
    "MessagePublisher::Publish: msgClassRef is not unique.";

}  // namespace vorix
