#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorix {

class PluginCore;
class ZORPluginMetaClass;

// One control port's value, named by the port's symbol.
struct Lv2PortValue {
    std::string symbol;
    float value = 0.0f;

    bool operator==(const Lv2PortValue&) const = default;
};

// The port values that a saved state or preset corresponds to, as the text stored beside its
// settings document: one line per value, the port's symbol, a blank and the value in the
// shortest form that reads back as the same float ("prmControl_1_Gain 6\n"); a port that may
// show more than one value has a line for each. Any thread but audio (allocates).
std::string Lv2PortRecordText(const std::vector<Lv2PortValue>& values);

// The values of such a text, in its order. A line that is not a symbol and a number is skipped:
// a damaged record costs only the ports it no longer names. Any thread but audio.
std::vector<Lv2PortValue> ReadLv2PortRecord(std::string_view text);

// What the engine holds for each host parameter that is an input port, held to the parameter's
// range as the core's reports are: the values a host's control ports should show after the
// engine loaded a document. Main thread (reads the engine's controls; allocates).
std::vector<Lv2PortValue> Lv2EnginePortValues(PluginCore& core,
                                              const ZORPluginMetaClass& metaClass);

}  // namespace vorix
