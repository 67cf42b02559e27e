#pragma once

#include "framework/MessageSubscriber.h"

namespace vorix {

class Ombrel;

// Base of the objects that listen to an engine: it subscribes to the engine's filter messages
// ('flrA') and to its audio configuration messages ('cfg ') and hands each to a virtual handler,
// which reads the message's values from mCurParam1 and mCurParam2. Main thread only.
class OmbrelMessageSubscriber : public MessageSubscriber<OmbrelMessageSubscriber> {
  public:
    explicit OmbrelMessageSubscriber(Ombrel* engine);
    ~OmbrelMessageSubscriber() override = default;

  protected:
    virtual void HandleFilterMessage(MsgId msgId) = 0;
    virtual void HandleConfigMessage(MsgId msgId) = 0;

    Ombrel* engine_;

  private:
    void OnFilterMessage(MsgId msgId) { HandleFilterMessage(msgId); }
    void OnConfigMessage(MsgId msgId) { HandleConfigMessage(msgId); }
};

}  // namespace vorix
