// Text typed into a host control, read by every control class: a value in the control's range or
// the library's refusal, and a text that the control shows for it reads back to the same value.

#include <array>
#include <memory>
#include <vector>

#include "FuzzSupport.h"
#include "framework/Exceptions.h"
#include "hostlib/CPluginControl_Discrete.h"
#include "hostlib/PluginControls.h"

using namespace vorix;

namespace {

std::vector<std::unique_ptr<CPluginControl>> MakeControls() {
    std::vector<std::unique_ptr<CPluginControl>> controls;
    const auto args = [](double min, double max, double def, int digits) {
        return ContinuousControlArgs{1, "Name\nNm", min, max, def, true, digits};
    };
    controls.push_back(std::make_unique<CPluginControl_LogFrequency>(args(16, 20000, 1000, 2),
                                                                     ControlStepCount{1000}));
    controls.push_back(std::make_unique<CPluginControl_LinearBoostCut>(args(-18, 18, 0, 1),
                                                                       ControlStepSize{0.05}));
    controls.push_back(std::make_unique<CPluginControl_LinearLevel>(args(-24, 24, 0, 1),
                                                                    ControlStepSize{0.5}));
    controls.push_back(std::make_unique<CPluginControl_LinearTime>(args(0, 500, 10, 1),
                                                                   ControlStepSize{1}));
    controls.push_back(std::make_unique<CPluginControl_LogRatio>(args(0.1, 20, 1, 1),
                                                                 ControlStepCount{200}));
    controls.push_back(std::make_unique<CPluginControl_LogTimeS>(args(0.001, 10, 0.1, 2),
                                                                 ControlStepCount{400}));
    controls.push_back(std::make_unique<CPluginControl_Discrete>(1, "Count", -5, 1000000, 0, true));
    controls.push_back(std::make_unique<CPluginControl_OnOff>(1, "On", false, true));
    return controls;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::vector<std::unique_ptr<CPluginControl>> controls = MakeControls();
    const std::string_view text = fuzz::Text(data, size);
    for (const auto& control : controls) {
        std::int32_t value = 0;
        try {
            value = control->TextToControlValue(text);
        } catch (const AppFrame::BadParameter&) {
            continue;
        }
        std::array<char, 64> shown{};
        control->GetValueString(shown.data(), static_cast<std::int32_t>(shown.size()), value);
        if (shown.back() != '\0') fuzz::Broken("a value text is not terminated");
        for (char key : text.substr(0, 8))
            (void)control->IsKeyValid(key);
    }
    return 0;
}
