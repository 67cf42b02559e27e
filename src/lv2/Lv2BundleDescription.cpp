#include "lv2/Lv2BundleDescription.h"

#include <sstream>
#include <stdexcept>

#include "core/SettingsTexts.h"
#include "core/ZORPluginMetaClass.h"
#include "lv2/Lv2ControlInputs.h"
#include "lv2/Lv2Names.h"
#include "lv2/Lv2PortLayout.h"
#include "lv2/TurtleText.h"

namespace vorix {

namespace {

constexpr const char* kPrefixes =
    "@prefix atom: <http://lv2plug.in/ns/ext/atom#> .\n"
    "@prefix bufsz: <http://lv2plug.in/ns/ext/buf-size#> .\n"
    "@prefix doap: <http://usefulinc.com/ns/doap#> .\n"
    "@prefix foaf: <http://xmlns.com/foaf/0.1/> .\n"
    "@prefix log: <http://lv2plug.in/ns/ext/log#> .\n"
    "@prefix lv2: <http://lv2plug.in/ns/lv2core#> .\n"
    "@prefix opts: <http://lv2plug.in/ns/ext/options#> .\n"
    "@prefix pg: <http://lv2plug.in/ns/ext/port-groups#> .\n"
    "@prefix pprops: <http://lv2plug.in/ns/ext/port-props#> .\n"
    "@prefix pset: <http://lv2plug.in/ns/ext/presets#> .\n"
    "@prefix rdf: <http://www.w3.org/1999/02/22-rdf-syntax-ns#> .\n"
    "@prefix rdfs: <http://www.w3.org/2000/01/rdf-schema#> .\n"
    "@prefix state: <http://lv2plug.in/ns/ext/state#> .\n"
    "@prefix units: <http://lv2plug.in/ns/extensions/units#> .\n"
    "@prefix urid: <http://lv2plug.in/ns/ext/urid#> .\n"
    "@prefix work: <http://lv2plug.in/ns/ext/worker#> .\n\n";

constexpr const char* kPluginComment =
    "A multi-filter equalizer: a chain of parametric, shelving, pass, notch and harmonic "
    "filters, ten of which the host can automate.";

// What the product's editor calls a parameter that means nothing in a channel layout, and a row
// it has no name for.
constexpr const char* kNotApplicableName = "n/a";
constexpr const char* kUnnamedParameter = "<EMPTY>";

// The channels of each plug-in, in the module's descriptor order.
std::vector<std::int32_t> ChannelLayouts() {
    std::vector<std::int32_t> layouts;
    for (std::uint32_t index = 0; index < static_cast<std::uint32_t>(kLv2PluginCount); ++index)
        layouts.push_back(Lv2PluginChannels(index));
    return layouts;
}

struct AudioPortNames {
    const char* symbol;
    const char* name;
    const char* channel;  // the port's designation within its group
};
constexpr AudioPortNames kStereoInputs[] = {{"in_l", "Left Input", "pg:left"},
                                            {"in_r", "Right Input", "pg:right"}};
constexpr AudioPortNames kStereoOutputs[] = {{"out_l", "Left Output", "pg:left"},
                                             {"out_r", "Right Output", "pg:right"}};
constexpr AudioPortNames kMonoInput = {"in", "Input", "pg:center"};
constexpr AudioPortNames kMonoOutput = {"out", "Output", "pg:center"};

AudioPortNames AudioNames(std::int32_t channels, std::int32_t channel, bool input) {
    const auto c = static_cast<std::size_t>(channel);
    if (channels == 1) return input ? kMonoInput : kMonoOutput;
    return input ? kStereoInputs[c] : kStereoOutputs[c];
}

// The audio ports of each side form one group, so that hosts that place channels by group (and
// some that load only plug-ins whose channels they can place) see a stereo or a mono pair.
std::string GroupUri(std::int32_t channels, bool input) {
    return std::string(Lv2PluginUri(channels)) + (input ? "-input" : "-output");
}

void WriteGroups(std::ostringstream& out, std::int32_t channels) {
    for (const bool input : {true, false}) {
        out << TurtleUri(GroupUri(channels, input)) << "\n"
            << "\ta pg:" << (input ? "InputGroup" : "OutputGroup")
            << " , pg:" << (channels == 1 ? "MonoGroup" : "StereoGroup") << " ;\n"
            << "\tlv2:symbol " << TurtleString(input ? "main_in" : "main_out") << " ;\n"
            << "\trdfs:label " << TurtleString(input ? "Input" : "Output") << " .\n\n";
    }
}

std::string PluginName(const ZORPluginMetaClass& metaClass, std::int32_t channels) {
    return metaClass.GetProductName() + (channels == 1 ? " Mono" : " Stereo");
}

// Gathers one port's statements and writes them as a block, "[ a ... ; lv2:index N ; ... ]",
// when it goes out of scope; the first port of a plug-in opens the lv2:port list.
class PortWriter {
  public:
    PortWriter(std::ostringstream& out, bool first) : out_(out), first_(first) {}
    ~PortWriter() {
        out_ << (first_ ? "\tlv2:port [\n" : " , [\n");
        for (std::size_t i = 0; i < statements_.size(); ++i) {
            out_ << "\t\t" << statements_[i] << (i + 1 < statements_.size() ? " ;\n" : "\n");
        }
        out_ << "\t]";
    }
    PortWriter(const PortWriter&) = delete;
    PortWriter& operator=(const PortWriter&) = delete;

    void Add(std::string statement) { statements_.push_back(std::move(statement)); }

  private:
    std::ostringstream& out_;
    bool first_;
    std::vector<std::string> statements_;
};

// A four-character code as its text: the meters' ids are their port symbols.
std::string CodeText(std::int32_t code) {
    const auto word = static_cast<std::uint32_t>(code);
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8)
        text += static_cast<char>((word >> shift) & 0xFF);
    return text;
}

void WriteAudioPorts(std::ostringstream& out, const Lv2PortLayout& layout) {
    for (const bool input : {true, false}) {
        for (std::int32_t c = 0; c < layout.Channels(); ++c) {
            const AudioPortNames names = AudioNames(layout.Channels(), c, input);
            const std::uint32_t index = input ? layout.AudioInput(c) : layout.AudioOutput(c);
            PortWriter port(out, index == 0);
            port.Add(std::string("a lv2:") + (input ? "InputPort" : "OutputPort") +
                     " , lv2:AudioPort");
            port.Add("lv2:index " + std::to_string(index));
            port.Add("lv2:symbol " + TurtleString(names.symbol));
            port.Add("lv2:name " + TurtleString(names.name));
            port.Add("pg:group " + TurtleUri(GroupUri(layout.Channels(), input)));
            port.Add(std::string("lv2:designation ") + names.channel);
        }
    }
}

// The port's name: the one the product's editor shows, or the internal name where it has none.
std::string ParameterName(const ZORPluginMetaClass& metaClass, const ZORParameterInfo& info,
                          const ChannelConfig& config) {
    std::string name;
    metaClass.GetControlNameSet(name, info.id, config);
    return name == kUnnamedParameter ? std::string(info.name) : name;
}

void WriteParameterPort(std::ostringstream& out, const ZORPluginMetaClass& metaClass,
                        const Lv2PortLayout& layout, const ZORParameterInfo& info) {
    const ChannelConfig config{layout.Channels(), layout.Channels()};
    std::string displayed;
    metaClass.GetControlNameSet(displayed, info.id, config);
    std::string units;
    metaClass.GetUnits(units, info.index);

    const bool input = Lv2ControlInputs::IsHostInput(info);
    PortWriter port(out, false);
    port.Add(std::string("a lv2:") + (input ? "InputPort" : "OutputPort") + " , lv2:ControlPort");
    port.Add("lv2:index " + std::to_string(layout.Parameter(info.index)));
    port.Add("lv2:symbol " + TurtleString(info.name));
    port.Add("lv2:name " + TurtleString(ParameterName(metaClass, info, config)));
    if (input) port.Add("lv2:default " + TurtleDecimal(info.defaultValue));
    port.Add("lv2:minimum " + TurtleDecimal(info.min));
    port.Add("lv2:maximum " + TurtleDecimal(info.max));
    if (units == "Hz") port.Add("units:unit units:hz");
    if (units == "dB") port.Add("units:unit units:db");
    if (info.type == kParamFrequency) {
        port.Add("lv2:portProperty pprops:logarithmic");
    } else if (info.type == kParamInteger) {
        port.Add("lv2:portProperty lv2:integer");
    } else if (info.step > 0.0f) {
        const auto steps = static_cast<long>((info.max - info.min) / info.step + 0.5f) + 1;
        port.Add("pprops:rangeSteps " + std::to_string(steps));
    }
    // A parameter that this layout or the editor leaves unnamed is no control for a user.
    if (displayed == kNotApplicableName || displayed == kUnnamedParameter) {
        port.Add("lv2:portProperty pprops:notOnGUI");
    }
}

void WriteControlPorts(std::ostringstream& out, const ZORPluginMetaClass& metaClass,
                       const Lv2PortLayout& layout) {
    for (std::int32_t index = 0; index < layout.Parameters(); ++index) {
        WriteParameterPort(out, metaClass, layout, *metaClass.GetParameterInfo(index));
    }
    {
        PortWriter port(out, false);
        port.Add("a lv2:InputPort , lv2:ControlPort");
        port.Add("lv2:index " + std::to_string(layout.Enabled()));
        port.Add("lv2:symbol \"enabled\"");
        port.Add("lv2:name \"Enabled\"");
        port.Add("lv2:default 1");
        port.Add("lv2:minimum 0");
        port.Add("lv2:maximum 1");
        port.Add("lv2:designation lv2:enabled");
        port.Add("lv2:portProperty lv2:toggled , lv2:integer");
    }
}

void WriteOutputPorts(std::ostringstream& out, const ZORPluginMetaClass& metaClass,
                      const Lv2PortLayout& layout) {
    std::vector<ZORMeterInfo> meters;
    metaClass.GetMeterNames(ChannelConfig{layout.Channels(), layout.Channels()}, meters);
    if (static_cast<std::int32_t>(meters.size()) != layout.Channels()) {
        throw std::runtime_error("one meter per channel expected");
    }
    for (std::int32_t c = 0; c < layout.Channels(); ++c) {
        const ZORMeterInfo& meter = meters[static_cast<std::size_t>(c)];
        PortWriter port(out, false);
        port.Add("a lv2:OutputPort , lv2:ControlPort");
        port.Add("lv2:index " + std::to_string(layout.Meter(c)));
        port.Add("lv2:symbol " + TurtleString(CodeText(meter.id)));
        port.Add("lv2:name " + TurtleString(meter.name));
        port.Add("lv2:minimum 0.0");
        port.Add("lv2:maximum 1.0");
        port.Add("units:unit units:coef");
    }
    PortWriter port(out, false);
    port.Add("a lv2:OutputPort , lv2:ControlPort");
    port.Add("lv2:index " + std::to_string(layout.Latency()));
    port.Add("lv2:symbol \"latency\"");
    port.Add("lv2:name \"Latency\"");
    port.Add("lv2:minimum 0");
    port.Add("lv2:maximum " + std::to_string(1 << 20));
    port.Add("lv2:designation lv2:latency");
    port.Add("lv2:portProperty lv2:integer , pprops:notOnGUI");
    port.Add("units:unit units:frame");
}

void WritePlugin(std::ostringstream& out, const ZORPluginMetaClass& metaClass,
                 std::int32_t channels) {
    const Lv2PortLayout layout(channels, metaClass.GetParameterCount());
    out << TurtleUri(Lv2PluginUri(channels)) << "\n"
        << "\ta lv2:Plugin , lv2:ParaEQPlugin , doap:Project ;\n"
        << "\tdoap:name " << TurtleString(PluginName(metaClass, channels)) << " ;\n"
        << "\tdoap:maintainer [ a foaf:Person ; foaf:name " << TurtleString(kMakerName) << " ] ;\n"
        << "\tdoap:license " << TurtleUri(kLv2LicenseUri) << " ;\n"
        << "\trdfs:comment " << TurtleString(kPluginComment) << " ;\n"
        << "\tlv2:optionalFeature lv2:hardRTCapable , urid:map , log:log , work:schedule ,"
           " opts:options ;\n"
        << "\topts:supportedOption bufsz:maxBlockLength ;\n"
        << "\tlv2:extensionData state:interface , work:interface ;\n"
        << "\tpg:mainInput " << TurtleUri(GroupUri(channels, true)) << " ;\n"
        << "\tpg:mainOutput " << TurtleUri(GroupUri(channels, false)) << " ;\n";
    WriteAudioPorts(out, layout);
    WriteControlPorts(out, metaClass, layout);
    WriteOutputPorts(out, metaClass, layout);
    out << " .\n\n";
    WriteGroups(out, channels);
}

// The keys of the plug-in's state, and the licence its description names.
void WriteVocabulary(std::ostringstream& out, const ZORPluginMetaClass& metaClass) {
    out << TurtleUri(kLv2SettingsKeyUri) << "\n"
        << "\ta rdf:Property ;\n"
        << "\trdfs:label \"settings\" ;\n"
        << "\trdfs:comment \"The settings document: the filters, the trims and the view options, "
           "as the product's session chunk and settings files hold them.\" ;\n"
        << "\trdfs:range atom:String .\n\n"
        << TurtleUri(kLv2PortValuesKeyUri) << "\n"
        << "\ta rdf:Property ;\n"
        << "\trdfs:label \"port values\" ;\n"
        << "\trdfs:comment \"The values each control port may show for the saved settings without "
           "acting, one line per value: the port's symbol and the value.\" ;\n"
        << "\trdfs:range atom:String .\n\n"
        << TurtleUri(kLv2LicenseUri) << "\n"
        << "\trdfs:label " << TurtleString(metaClass.GetProductName() + " licence") << " ;\n"
        << "\trdfs:comment "
        << TurtleString("Copyright (c) " + metaClass.GetCopyright() + ". All rights reserved.")
        << " .\n\n";
}

}  // namespace

std::string Lv2ManifestTurtle(const std::string& binaryName,
                              const std::vector<Lv2FactoryProgram>& programs) {
    std::ostringstream out;
    out << kPrefixes;
    for (const std::int32_t channels : ChannelLayouts()) {
        out << TurtleUri(Lv2PluginUri(channels)) << "\n"
            << "\ta lv2:Plugin ;\n"
            << "\tlv2:minorVersion " << kLv2MinorVersion << " ;\n"
            << "\tlv2:microVersion " << kLv2MicroVersion << " ;\n"
            << "\tlv2:binary " << TurtleUri(binaryName) << " ;\n"
            << "\trdfs:seeAlso " << TurtleUri(kLv2PluginsFile) << " .\n\n";
    }
    for (const std::int32_t channels : ChannelLayouts()) {
        for (const Lv2FactoryProgram& program : programs) {
            out << TurtleUri(Lv2PresetUri(channels, program.number)) << "\n"
                << "\ta pset:Preset ;\n"
                << "\tlv2:appliesTo " << TurtleUri(Lv2PluginUri(channels)) << " ;\n"
                << "\trdfs:seeAlso " << TurtleUri(kLv2PresetsFile) << " .\n\n";
        }
    }
    return out.str();
}

std::string Lv2PluginsTurtle(const ZORPluginMetaClass& metaClass) {
    std::ostringstream out;
    out << kPrefixes;
    for (const std::int32_t channels : ChannelLayouts())
        WritePlugin(out, metaClass, channels);
    WriteVocabulary(out, metaClass);
    return out.str();
}

std::string Lv2PresetsTurtle(const std::vector<Lv2FactoryProgram>& programs,
                             const Lv2ProgramPortValues& portValues) {
    std::ostringstream out;
    out << kPrefixes;
    for (const std::int32_t channels : ChannelLayouts()) {
        for (const Lv2FactoryProgram& program : programs) {
            const std::vector<Lv2PortValue> values = portValues(channels, program);
            out << TurtleUri(Lv2PresetUri(channels, program.number)) << "\n"
                << "\ta pset:Preset ;\n"
                << "\tlv2:appliesTo " << TurtleUri(Lv2PluginUri(channels)) << " ;\n"
                << "\trdfs:label " << TurtleString(program.name) << " ;\n";
            for (std::size_t i = 0; i < values.size(); ++i) {
                out << (i == 0 ? "\tlv2:port [\n" : " , [\n") << "\t\tlv2:symbol "
                    << TurtleString(values[i].symbol) << " ;\n"
                    << "\t\tpset:value " << TurtleDecimal(values[i].value) << "\n\t]";
            }
            if (!values.empty()) out << " ;\n";
            out << "\tstate:state [\n"
                << "\t\t" << TurtleUri(kLv2SettingsKeyUri) << " "
                << TurtleLongString(program.settings) << " ;\n"
                << "\t\t" << TurtleUri(kLv2PortValuesKeyUri) << " "
                << TurtleLongString(Lv2PortRecordText(values)) << "\n"
                << "\t] .\n\n";
        }
    }
    return out.str();
}

}  // namespace vorix
