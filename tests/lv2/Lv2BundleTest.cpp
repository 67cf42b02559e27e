// The bundle as hosts read it: Turtle that parses, ports that match the parameter table, the
// designated ports, and the factory programs as presets.

#include <gtest/gtest.h>
#include <lv2/core/lv2.h>
#include <lv2/port-groups/port-groups.h>
#include <lv2/port-props/port-props.h>
#include <lv2/presets/presets.h>
#include <lv2/units/units.h>
#include <serd/serd.h>

#include <cstdio>
#include <set>
#include <string>
#include <vector>

#include "Lv2TestHost.h"
#include "host/ZORVorixMetaClass.h"
#include "lv2/Lv2Names.h"

namespace vorix::test {
namespace {

// Reads a Turtle file with serd and counts its statements; -1 for a file with any error.
int TurtleStatements(const std::string& path) {
    int statements = 0;
    SerdReader* reader = serd_reader_new(
        SERD_TURTLE, &statements, nullptr, nullptr, nullptr,
        [](void* count, SerdStatementFlags, const SerdNode*, const SerdNode*, const SerdNode*,
           const SerdNode*, const SerdNode*, const SerdNode*) {
            ++*static_cast<int*>(count);
            return SERD_SUCCESS;
        },
        nullptr);
    bool reported = false;
    const auto noteError = [](void* flag, const SerdError*) {
        *static_cast<bool*>(flag) = true;
        return SERD_SUCCESS;
    };
    serd_reader_set_error_sink(reader, noteError, &reported);
    FILE* file = std::fopen(path.c_str(), "r");
    const auto* name = reinterpret_cast<const uint8_t*>(path.c_str());
    const bool failed = file == nullptr || serd_reader_read_file_handle(reader, file, name) != 0;
    if (file != nullptr) std::fclose(file);
    serd_reader_free(reader);
    return failed || reported ? -1 : statements;
}

TEST(Lv2Bundle, EveryTurtleFileParsesWithoutError) {
    for (const char* name : {kLv2ManifestFile, kLv2PluginsFile, kLv2PresetsFile}) {
        EXPECT_GT(TurtleStatements(std::string(VORIX_LV2_BUNDLE_DIR) + "/" + name), 10) << name;
    }
}

class Lv2PluginDescription : public ::testing::TestWithParam<int> {
  protected:
    const LilvPlugin* plugin = Lv2Bundle::Get().Plugin(Lv2PluginUri(GetParam()));
    const ZORVorixMetaClass table;

    const LilvNode* Node(const char* uri) { return Lv2Bundle::Get().Node(uri); }
    const LilvPort* PortOf(const char* symbol) {
        LilvNode* node = lilv_new_string(Lv2Bundle::Get().World(), symbol);
        const LilvPort* port = lilv_plugin_get_port_by_symbol(plugin, node);
        lilv_node_free(node);
        return port;
    }
    bool HasValue(const LilvPort* port, const char* predicate, const char* object) {
        LilvNodes* values = lilv_port_get_value(plugin, port, Node(predicate));
        const bool found = values != nullptr && lilv_nodes_contains(values, Node(object));
        lilv_nodes_free(values);
        return found;
    }
};

// The automatable rows are the host's controls; the session counter, which nobody may automate,
// is the engine's to show. A host keeps automation data for every control input, and refuses it
// on reload for one marked not automatic, so no input carries that mark.
TEST_P(Lv2PluginDescription, ListsTheParameterTableInTableOrderWithTheCounterAsAnOutput) {
    ASSERT_NE(plugin, nullptr);
    uint32_t previous = 0;
    for (int index = 0; index < table.GetParameterCount(); ++index) {
        const ZORParameterInfo& info = *table.GetParameterInfo(index);
        const LilvPort* port = PortOf(info.name);
        ASSERT_NE(port, nullptr) << info.name;
        EXPECT_TRUE(lilv_port_is_a(plugin, port, Node(LV2_CORE__ControlPort)));
        EXPECT_EQ(lilv_port_is_a(plugin, port, Node(LV2_CORE__InputPort)), info.automatable)
            << info.name;
        EXPECT_EQ(lilv_port_is_a(plugin, port, Node(LV2_CORE__OutputPort)), !info.automatable)
            << info.name;
        const uint32_t position = lilv_port_get_index(plugin, port);
        EXPECT_TRUE(index == 0 || position == previous + 1) << info.name;
        previous = position;

        LilvNode *def = nullptr, *min = nullptr, *max = nullptr;
        lilv_port_get_range(plugin, port, &def, &min, &max);
        if (info.automatable) {
            EXPECT_EQ(lilv_node_as_float(def), info.defaultValue) << info.name;
        }
        EXPECT_EQ(lilv_node_as_float(min), info.min) << info.name;
        EXPECT_EQ(lilv_node_as_float(max), info.max) << info.name;
        lilv_node_free(def);
        lilv_node_free(min);
        lilv_node_free(max);

        const bool frequency = info.type == kParamFrequency;
        EXPECT_EQ(lilv_port_has_property(plugin, port, Node(LV2_PORT_PROPS__logarithmic)),
                  frequency);
        EXPECT_EQ(HasValue(port, LV2_UNITS__unit, LV2_UNITS__hz), info.units == "Hz") << info.name;
        EXPECT_EQ(HasValue(port, LV2_UNITS__unit, LV2_UNITS__db), info.units == "dB") << info.name;
    }
    for (uint32_t i = 0; i < lilv_plugin_get_num_ports(plugin); ++i) {
        const LilvPort* port = lilv_plugin_get_port_by_index(plugin, i);
        if (!lilv_port_is_a(plugin, port, Node(LV2_CORE__InputPort))) continue;
        EXPECT_FALSE(lilv_port_has_property(plugin, port, Node(LV2_PORT_PROPS__notAutomatic)))
            << "port " << i;
    }
}

// Hosts that place channels by group see a stereo pair (left, right) or one mono channel on
// each side, and the two sides as the plug-in's main input and output.
TEST_P(Lv2PluginDescription, GroupsItsAudioPortsAsTheMainStereoOrMonoPair) {
    LilvWorld* world = Lv2Bundle::Get().World();
    const bool stereo = GetParam() == 2;
    const std::vector<const char*> channels =
        stereo ? std::vector<const char*>{LV2_PORT_GROUPS__left, LV2_PORT_GROUPS__right}
               : std::vector<const char*>{LV2_PORT_GROUPS__center};
    for (const bool input : {true, false}) {
        LilvNodes* mains = lilv_plugin_get_value(
            plugin, Node(input ? LV2_PORT_GROUPS__mainInput : LV2_PORT_GROUPS__mainOutput));
        ASSERT_EQ(lilv_nodes_size(mains), 1u);
        const LilvNode* group = lilv_nodes_get_first(mains);
        EXPECT_TRUE(lilv_world_ask(
            world, group, Node(LILV_NS_RDF "type"),
            Node(stereo ? LV2_PORT_GROUPS__StereoGroup : LV2_PORT_GROUPS__MonoGroup)));
        std::vector<std::string> designations;
        for (uint32_t i = 0; i < lilv_plugin_get_num_ports(plugin); ++i) {
            const LilvPort* port = lilv_plugin_get_port_by_index(plugin, i);
            if (!lilv_port_is_a(plugin, port, Node(LV2_CORE__AudioPort)) ||
                !lilv_port_is_a(plugin, port,
                                Node(input ? LV2_CORE__InputPort : LV2_CORE__OutputPort))) {
                continue;
            }
            EXPECT_TRUE(HasValue(port, LV2_PORT_GROUPS__group, lilv_node_as_uri(group)));
            LilvNodes* designation = lilv_port_get_value(plugin, port, Node(LV2_CORE__designation));
            if (lilv_nodes_size(designation) == 1)
                designations.emplace_back(lilv_node_as_uri(lilv_nodes_get_first(designation)));
            lilv_nodes_free(designation);
        }
        EXPECT_EQ(designations, std::vector<std::string>(channels.begin(), channels.end()));
        lilv_nodes_free(mains);
    }
}

TEST_P(Lv2PluginDescription, DesignatesTheBypassTheMetersAndTheLatency) {
    const LilvPort* enabled = lilv_plugin_get_port_by_designation(plugin, Node(LV2_CORE__InputPort),
                                                                  Node(LV2_CORE__enabled));
    ASSERT_NE(enabled, nullptr);
    EXPECT_TRUE(lilv_port_has_property(plugin, enabled, Node(LV2_CORE__toggled)));
    EXPECT_TRUE(lilv_plugin_has_latency(plugin));
    const LilvPort* latency = lilv_plugin_get_port_by_designation(
        plugin, Node(LV2_CORE__OutputPort), Node(LV2_CORE__latency));
    ASSERT_NE(latency, nullptr);
    EXPECT_EQ(lilv_port_get_index(plugin, latency), lilv_plugin_get_latency_port_index(plugin));
    std::set<std::string> meters;
    for (const char* symbol : {"out1", "out2"}) {
        const LilvPort* meter = PortOf(symbol);
        if (meter == nullptr) continue;
        EXPECT_TRUE(lilv_port_is_a(plugin, meter, Node(LV2_CORE__OutputPort)));
        LilvNode* name = lilv_port_get_name(plugin, meter);
        meters.insert(lilv_node_as_string(name));
        lilv_node_free(name);
    }
    const std::set<std::string> expected =
        GetParam() == 2 ? std::set<std::string>{"L Out", "R Out"} : std::set<std::string>{"Out"};
    EXPECT_EQ(meters, expected);
}

TEST_P(Lv2PluginDescription, OffersEveryFactoryProgramAsAPreset) {
    LilvNodes* presets = lilv_plugin_get_related(plugin, Node(LV2_PRESETS__Preset));
    std::multiset<std::string> labels;
    LILV_FOREACH(nodes, i, presets) {
        const LilvNode* preset = lilv_nodes_get(presets, i);
        lilv_world_load_resource(Lv2Bundle::Get().World(), preset);
        LilvNode* label =
            lilv_world_get(Lv2Bundle::Get().World(), preset, Node(LILV_NS_RDFS "label"), nullptr);
        labels.insert(label != nullptr ? lilv_node_as_string(label) : "");
        lilv_node_free(label);
    }
    lilv_nodes_free(presets);
    std::vector<std::string> names;
    table.GetFactoryProgramNames(names);
    EXPECT_EQ(labels, std::multiset<std::string>(names.begin(), names.end()));
}

INSTANTIATE_TEST_SUITE_P(MonoAndStereo, Lv2PluginDescription, ::testing::Values(1, 2),
                         [](const auto& info) { return info.param == 1 ? "Mono" : "Stereo"; });

}  // namespace
}  // namespace vorix::test
