#pragma once

#include <cstdint>
#include <map>

#include "framework/GenericControl.h"
#include "framework/MessagePublisher.h"

namespace vorix {

// Groups controls under integer ids and turns what they announce into calls of its own hooks.
// Every change of a child is also sent on the container's class kContainerChangeRef, as message
// 0 with the child's id in parameter 1: the container's single change signal. All operations
// are main thread only and must not be used from the audio thread.
class ControlContainer : public MessagePublisher {
  public:
    struct ContainerEntry {
        GenericControl* control;
        MsgSubscription* subscription;
        bool owned;  // deleted with the container
    };

    // Main thread. Publishes kContainerChangeRef. `argument` is kept for subclasses.
    ControlContainer(PluginServices* services, std::int32_t argument);

    // Main thread. Deletes the owned controls and lets the others go.
    ~ControlContainer() override;

    // Main thread. Hears `control` under `id`; with `owned` the container deletes it in the end.
    // An id in use raises AppFrame::DuplicateEntry and changes nothing; a null control raises
    // AppFrame::BadParameter.
    virtual void AddControl(GenericControl* control, std::int32_t id, bool owned);

    // Main thread. The control of `id`, or null.
    virtual GenericControl* GetControl(std::int32_t id) const;

    // Main thread. Stops hearing the control of `id`, which lives on; an unknown id is a no-op.
    void RemoveControl(std::int32_t id);

    // Main thread. The constructor's argument.
    std::int32_t GetArgument() const { return argument_; }

  protected:
    // Main thread. The control of `id` was destroyed; its entry is already gone.
    virtual void OnControlGone(std::int32_t id);

    // Main thread. The control of `id` announced a new value.
    virtual void OnControlValueChanged(std::int32_t id, GenericControl::Value value,
                                       GenericControl* control);

    // Main thread. The control of `id` sent any other message.
    virtual void OnControlMessage(std::int32_t id, MsgId msgId, MsgParam param1, MsgParam param2);

    // Main thread. The children in id order, for subclasses that treat them as a group.
    const std::map<std::int32_t, ContainerEntry>& GetEntries() const { return entries_; }

  private:
    void ForgetEntry(std::int32_t id, MsgSubscription* subscription);

    static void Deliver(MsgSubscription* subscription, void* subscriber, std::int32_t key,
                        MsgClass* msgClass, MsgId msgId, MsgParam param1, MsgParam param2);
    static void Detach(MsgSubscription* subscription, void* subscriber, std::int32_t key);

    std::int32_t argument_;
    std::map<std::int32_t, ContainerEntry> entries_;
};

}  // namespace vorix
