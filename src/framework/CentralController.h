#pragma once

#include "framework/GenericControl.h"

namespace vorix {

// A control that others follow: each following control sees the controller's value in its own
// range, a change of any of them moves the controller and every sibling, and the control that
// caused a change does not hear it back, so it keeps exactly the value the user gave it. This is
// where a plug-in parameter meets the user interface. All operations are main thread only and
// must not be used from the audio thread.
class CentralController : public GenericControl {
  public:
    // Main thread. Range 0 to 1, default 0, id 0, following nobody.
    explicit CentralController(PluginServices* services);

    // Main thread. As GenericControl's constructor.
    CentralController(PluginServices* services, Value minimum, Value maximum, Value defaultValue,
                      std::uint32_t controlId, CentralController* controller);

    // Main thread. Takes a new value as a change of the controller's own.
    void SetValue(Value newValue) override;

    // Main thread. Takes the value and announces it to every follower but the originating one
    // (null for none). Ignored while an announcement is under way: that is how an echo ends.
    virtual void SetValueFrom(Value newValue, GenericControl* originatingControl);

    // Main thread. Takes `control` from any controller it follows and gives it the present value
    // at once. Null, or the controller itself, raises AppFrame::BadParameter.
    virtual void AddControl(GenericControl* control);

    // Main thread. Lets `control` go; a control that does not follow this one is left alone.
    virtual void RemoveControl(GenericControl* control);

  protected:
    // Main thread. Runs after each change of value and before its announcement.
    virtual void OnValueChanged();

  private:
    bool announcing_ = false;
};

}  // namespace vorix
