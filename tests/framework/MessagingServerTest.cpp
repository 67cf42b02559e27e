#include "framework/MessagingServer.h"

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace vorix {
namespace {

using Log = std::vector<std::string>;

// A subscriber that writes "name" for message 1, "name:gone" for kMsgClassGone and "name:id"
// otherwise, then runs its optional action.
struct Listener {
    std::string name;
    Log* log = nullptr;
    MsgSubscription* subscription = nullptr;
    MsgParam lastParam1 = -1;
    MsgParam lastParam2 = -1;
    std::function<void(MsgId, MsgParam)> action;
};

void Deliver(MsgSubscription*, void* subscriber, std::int32_t, MsgClass*, MsgId msgId,
             MsgParam param1, MsgParam param2) {
    auto& listener = *static_cast<Listener*>(subscriber);
    std::string entry = listener.name;
    if (msgId == kMsgClassGone) entry += ":gone";
    if (msgId != 1 && msgId != kMsgClassGone) entry += ":" + std::to_string(msgId);
    listener.log->push_back(entry);
    listener.lastParam1 = param1;
    listener.lastParam2 = param2;
    if (listener.action) listener.action(msgId, param2);
}

void DetachLogged(MsgSubscription*, void* subscriber, std::int32_t) {
    auto& listener = *static_cast<Listener*>(subscriber);
    listener.log->push_back(listener.name + ":detached");
}

class MessagingServerTest : public ::testing::Test {
  protected:
    Listener& Subscribe(const std::string& name, MsgClass* to = nullptr) {
        Listener& listener = listeners[name];
        listener.name = name;
        listener.log = &log;
        listener.subscription = server->AddSubscription(to != nullptr ? to : cls, &Deliver,
                                                        &listener, 0, &DetachLogged);
        return listener;
    }
    void Send(MsgId msgId = 1, MsgSubscription* excluded = nullptr) {
        server->SendToClass(cls, msgId, 11, 22, excluded);
    }
    MsgSubscription* Sub(const std::string& name) { return listeners[name].subscription; }
    void Suspend(MsgSubscription* sub, std::initializer_list<bool> steps) {
        for (bool suspend : steps)
            server->SuspendSubscription(sub, suspend);
    }

    // Listeners first: the server's destruction still talks to them.
    Log log;
    std::map<std::string, Listener> listeners;
    std::unique_ptr<MessagingServer> server = std::make_unique<MessagingServer>();
    MsgClass* cls = server->CreateMsgClass(123);
};

TEST_F(MessagingServerTest, LastSubscribedHearsFirstUntilMovedToTheEnd) {
    for (const char* name : {"first", "second", "third"})
        Subscribe(name);
    Send();
    server->MoveSubscriptionToEnd(cls, Sub("third"));
    Send();
    EXPECT_EQ(log, (Log{"third", "second", "first", "second", "first", "third"}));
    EXPECT_EQ(listeners["first"].lastParam1, 11);
    EXPECT_EQ(listeners["first"].lastParam2, 22);
}

TEST_F(MessagingServerTest, ExcludedSubscriptionAloneMissesTheMessage) {
    Subscribe("first");
    Subscribe("second");
    Send(1, Sub("second"));
    EXPECT_EQ(log, (Log{"first"}));
}

TEST_F(MessagingServerTest, HandlerMayRemoveItsOwnSubscription) {
    Subscribe("first");
    Subscribe("second").action = [this](MsgId, MsgParam) {
        server->RemoveSubscription(cls, Sub("second"));
    };
    Subscribe("third");
    Send();
    Send();
    EXPECT_EQ(log, (Log{"third", "second", "first", "third", "first"}));
    EXPECT_EQ(MessagingServer::GetSubscriberCount(cls), 2);
}

TEST_F(MessagingServerTest, SuspensionsNestAndSurplusResumesAreHarmless) {
    MsgSubscription* sub = Subscribe("only").subscription;
    Suspend(sub, {true, true, false});
    Send();  // suspended once still
    Suspend(sub, {false, false, false, false, true});
    Send();  // the count stopped at 0, so one suspension silences again
    Suspend(sub, {false});
    Send();
    EXPECT_EQ(log, (Log{"only"}));
}

TEST_F(MessagingServerTest, HandlerSuspendingTheClassSilencesTheRestOfTheWalk) {
    Subscribe("first");
    Subscribe("second").action = [this](MsgId, MsgParam) { server->SuspendMsgClass(cls, true); };
    Send();
    EXPECT_EQ(log, (Log{"second"}));
    server->SendToSubscription(cls, Sub("first"), 1, 0, 0);
    EXPECT_EQ(log.size(), 1u);
    server->SuspendMsgClass(cls, false);
    server->SendToSubscription(cls, Sub("first"), 1, 0, 0);
    EXPECT_EQ(log, (Log{"second", "first"}));
}

TEST_F(MessagingServerTest, PostedMessagesWaitForThePumpAndArriveFirstInFirstOut) {
    Subscribe("only").action = [this](MsgId msgId, MsgParam) {
        if (msgId == 5) server->PostToClass(cls, 9, 0, 0, false);
    };
    for (MsgId msgId : {5, 6})
        server->PostToClass(cls, msgId, 0, 0, false);
    EXPECT_TRUE(log.empty());
    server->DeliverPosted();
    // What a handler posts comes in the same run, behind what was queued.
    EXPECT_EQ(log, (Log{"only:5", "only:6", "only:9"}));
}

TEST_F(MessagingServerTest, PostedMessageToAClassSuspendedAtDeliveryIsLost) {
    Subscribe("only");
    server->PostToClass(cls, 5, 0, 0, false);
    server->SuspendMsgClass(cls, true);
    server->DeliverPosted();
    server->SuspendMsgClass(cls, false);
    server->DeliverPosted();
    EXPECT_TRUE(log.empty());
}

TEST_F(MessagingServerTest, OwnedParameterIsReadableThenFreedEvenWhenNobodyHears) {
    int seen = 0;
    Subscribe("reader").action = [&seen](MsgId, MsgParam param2) {
        seen = *ParamPointer<int>(param2);
    };
    server->PostToClass(cls, 5, 0, NewOwnedParam(42), true);
    server->DeliverPosted();
    EXPECT_EQ(seen, 42);
    // Nobody hears these; the leak checker of the sanitizer build sees that the block is freed.
    server->SuspendSubscription(Sub("reader"), true);
    server->PostToClass(cls, 6, 0, NewOwnedParam(43), true);
    server->PostToClass(cls, 7, 0, 0, true);
    server->DeliverPosted();
    EXPECT_EQ(log, (Log{"reader:5"}));
}

TEST_F(MessagingServerTest, ThrowingHandlerLosesOnlyItsOwnPostedMessage) {
    Subscribe("only").action = [](MsgId msgId, MsgParam) {
        if (msgId == 5) throw std::runtime_error("handler failed");
    };
    server->PostToClass(cls, 5, 0, NewOwnedParam(1), true);
    server->PostToClass(cls, 6, 0, 0, false);
    EXPECT_THROW(server->DeliverPosted(), std::runtime_error);
    server->DeliverPosted();
    EXPECT_EQ(log, (Log{"only:5", "only:6"}));
}

TEST_F(MessagingServerTest, DestroyedClassTellsGoneToThoseWhoMayHearAndFreesTheRest) {
    for (const char* name : {"quiet", "first", "second"})
        Subscribe(name);
    server->SuspendSubscription(Sub("quiet"), true);
    server->DestroyMsgClass(cls);
    EXPECT_EQ(log, (Log{"second:gone", "first:gone", "quiet:detached"}));
    EXPECT_EQ(listeners["first"].lastParam1, 0);
    EXPECT_EQ(listeners["first"].lastParam2, 0);
}

TEST_F(MessagingServerTest, DyingClassTakesNoNewSubscription) {
    bool refused = false;
    Subscribe("loyal").action = [this, &refused](MsgId, MsgParam) {
        try {
            server->AddSubscription(cls, &Deliver, &listeners["loyal"], 0);
        } catch (const AppFrame::BadParameter&) {
            refused = true;
        }
    };
    server->DestroyMsgClass(cls);
    EXPECT_TRUE(refused);
    EXPECT_EQ(log, (Log{"loyal:gone"}));
}

TEST_F(MessagingServerTest, ForeignClassIsRefusedBeforeAnyoneHears) {
    MessagingServer other;
    MsgClass* foreign = other.CreateMsgClass(1);
    Subscribe("stranger", foreign);
    EXPECT_THROW(server->DestroyMsgClass(foreign), MessagingServer::BadMsgClassId);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(MessagingServer::GetSubscriberCount(foreign), 1);
}

TEST_F(MessagingServerTest, ServerDestructionTellsSubscribersAndDropsItsQueue) {
    Subscribe("only");
    server->PostToClass(cls, 5, 0, NewOwnedParam(7), true);
    server.reset();
    EXPECT_EQ(log, (Log{"only:gone"}));
}

}  // namespace
}  // namespace vorix
