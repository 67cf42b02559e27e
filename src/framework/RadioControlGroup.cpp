#include "framework/RadioControlGroup.h"

#include <limits>

#include "framework/GraphicControl.h"

namespace vorix {

RadioControlGroup::RadioControlGroup(PluginServices* services, std::int32_t argument)
    : GenericControl(services, std::numeric_limits<Value>::min(), std::numeric_limits<Value>::max(),
                     0, 0, nullptr),
      ControlContainer(services, argument) {}

template <typename Step>
void RadioControlGroup::Quietly(const ContainerEntry& entry, Step step) {
    MessagingServer& server = GenericControl::GetMessagingServer();
    server.SuspendSubscription(entry.subscription, true);
    try {
        step();
    } catch (...) {
        server.SuspendSubscription(entry.subscription, false);
        throw;
    }
    server.SuspendSubscription(entry.subscription, false);
}

void RadioControlGroup::TurnOn(std::int32_t id) {
    if (auto* button = dynamic_cast<GraphicControl*>(GetControl(id))) button->SetValue(1);
}

void RadioControlGroup::SetValue(Value id) {
    // Turning the button on comes back through OnControlValueChanged, which selects it.
    TurnOn(id);
    GenericControl::SetValue(id);
}

void RadioControlGroup::SetValueSilently(Value id) {
    TurnOn(id);
    GenericControl::SetValueSilently(id);
}

void RadioControlGroup::AddButton(GraphicControl* button, std::int32_t id) {
    AddControl(button, id, true);
    if (GetValue() != id) return;
    for (const auto& child : GetEntries()) {
        GenericControl* control = child.second.control;
        const GenericControl::Value on = child.first == id ? 1 : 0;
        Quietly(child.second, [control, on] { control->SetValue(on); });
    }
}

void RadioControlGroup::SetSelectedDirect(std::int32_t id) {
    GenericControl::SetValue(id);
}

void RadioControlGroup::OnControlValueChanged(std::int32_t id, GenericControl::Value /*value*/,
                                              GenericControl* control) {
    auto* button = dynamic_cast<GraphicControl*>(control);
    const ContainerEntry* clicked = nullptr;
    for (const auto& child : GetEntries()) {
        GenericControl* other = child.second.control;
        if (child.first != id) {
            Quietly(child.second, [other] { other->SetValue(0); });
        } else {
            clicked = &child.second;
        }
    }
    bool anyOn = false;
    for (const auto& child : GetEntries()) {
        const GenericControl* other = child.second.control;
        Quietly(child.second, [&anyOn, other] { anyOn = anyOn || other->GetValue() != 0; });
    }
    // A click on the selected button cannot switch it off.
    if (!anyOn && clicked != nullptr && button != nullptr)
        Quietly(*clicked, [&] { button->SetValue(1); });
    if (button != nullptr && button->GetValue() != 0) SetSelectedDirect(id);
}

}  // namespace vorix
