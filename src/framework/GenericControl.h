#pragma once

#include <cstdint>

#include "framework/MessageTypes.h"
#include "framework/MessagingServer.h"
#include "framework/PluginServicesClient.h"

namespace vorix {

class CentralController;

// The value model of one control of the editor: an integer in a range, with a default and a
// message class of its own on which every change is announced as kControlValueChanged (the new
// value, the control). A control may follow a CentralController, which keeps it in step with its
// siblings, each in its own range. It knows nothing of drawing. All operations are main thread
// only and must not be used from the audio thread.
class GenericControl : public PluginServicesClient {
  public:
    using Value = std::int32_t;

    // Main thread. Makes the control's class, carrying `controlId`. Without a controller the
    // value starts at the default; with one, the controller gives its present value at once.
    GenericControl(PluginServices* services, Value minimum, Value maximum, Value defaultValue,
                   std::uint32_t controlId, CentralController* controller);

    // Main thread. Leaves the controller and destroys the class; subscribers hear kMsgClassGone.
    ~GenericControl() override;

    GenericControl(const GenericControl&) = delete;
    GenericControl& operator=(const GenericControl&) = delete;

    // Main thread. The present value; a subclass that keeps it elsewhere overrides this.
    virtual Value GetValue() const;

    // Main thread. Takes the value, clamped into the range, tells the controller and announces it;
    // the present value again is ignored. A handler's exception passes out to the caller.
    virtual void SetValue(Value newValue);

    // Main thread. As SetValue, but takes effect and is announced even for the present value.
    virtual void ForceValue(Value newValue);

    // Main thread. As SetValue, but the control's own subscribers hear nothing; the controller
    // and the sibling controls still follow.
    virtual void SetValueSilently(Value newValue);

    // Main thread. Forces the default value.
    virtual void ResetToDefault();

    // Main thread. Moves the range and clamps the value into it without announcing it.
    virtual void SetRange(Value newMinimum, Value newMaximum);

    // Main thread. The fields of the value model.
    Value GetPreviousValue() const { return previousValue_; }
    Value GetMinimum() const { return minimum_; }
    Value GetMaximum() const { return maximum_; }
    Value GetDefaultValue() const { return defaultValue_; }
    std::uint32_t GetControlId() const { return controlId_; }
    CentralController* GetController() const { return controller_; }
    MsgClass* GetMsgClass() const { return msgClass_; }

  protected:
    // Steps shared with CentralController: takes the new value and clamps it; when the virtual
    // GetValue then disagrees, SetValue resynchronises a subclass that keeps the value elsewhere.
    void StoreValue(Value newValue);

    // Sends kControlValueChanged with the present value on the own class.
    void Announce(MsgSubscription* excluded);

  private:
    friend class CentralController;

    Value Clamped(Value value) const;
    Value ToControllerValue() const;
    Value FromControllerValue() const;
    void LeaveController();

    static void DeliverFromController(MsgSubscription* subscription, void* subscriber,
                                      std::int32_t key, MsgClass* msgClass, MsgId msgId,
                                      MsgParam param1, MsgParam param2);
    static void DetachFromController(MsgSubscription* subscription, void* subscriber,
                                     std::int32_t key);

    Value value_;
    Value previousValue_;
    Value maximum_;
    Value minimum_;
    Value defaultValue_;
    std::uint32_t controlId_;
    CentralController* controller_ = nullptr;
    MsgClass* msgClass_ = nullptr;
    MsgSubscription* controllerSubscription_ = nullptr;
    bool silent_ = false;
    bool forceNext_ = false;
};

}  // namespace vorix
