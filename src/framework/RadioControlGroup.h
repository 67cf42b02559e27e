#pragma once

#include <cstdint>

#include "framework/ControlContainer.h"
#include "framework/GenericControl.h"

namespace vorix {

class GraphicControl;

// A row of buttons of which exactly one is on: the group's value is the id of the selected
// button. A click on another button selects it and clears the rest; a click on the selected one
// leaves it selected. Setting the group's value turns the button of that id on. The group owns
// its buttons' entries, not the frames, which belong to their parent frame. Editor thread.
class RadioControlGroup : public GenericControl, public ControlContainer {
  public:
    // Editor thread. Any 32-bit id may be selected; the default is 0.
    RadioControlGroup(PluginServices* services, std::int32_t argument);

    // ---- GenericControl ----
    void SetValue(Value id) override;
    void SetValueSilently(Value id) override;

    // ---- The group's own slots ----
    // Editor thread. Adds a button under `id`; if `id` is the selected one, it is turned on and
    // the others off, without a word to the group.
    virtual void AddButton(GraphicControl* button, std::int32_t id);
    // Editor thread. The group's value alone, announced, without going back to the buttons.
    virtual void SetSelectedDirect(std::int32_t id);

  protected:
    void OnControlValueChanged(std::int32_t id, GenericControl::Value value,
                               GenericControl* control) override;

  private:
    // Turns the button of `id` on, if it is a graphic control.
    void TurnOn(std::int32_t id);
    // Runs `step` with the group's subscription to the button suspended, so that the group does
    // not hear its own changes.
    template <typename Step>
    void Quietly(const ContainerEntry& entry, Step step);
};

}  // namespace vorix
