#include "Lv2TestHost.h"

#include <gtest/gtest.h>
#include <lv2/atom/atom.h>
#include <lv2/buf-size/buf-size.h>
#include <lv2/core/lv2.h>
#include <lv2/state/state.h>
#include <lv2/urid/urid.h>

#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <numbers>

#include "lv2/Lv2Names.h"

namespace vorix::test {

Audio TestSignal(int channels, int frames, double rate) {
    Audio audio(static_cast<std::size_t>(channels), std::vector<float>(frames));
    for (int c = 0; c < channels; ++c) {
        const double hz = 220.0 * (c + 1) + 37.0;
        for (int i = 0; i < frames; ++i) {
            audio[c][i] = static_cast<float>(
                0.5 * std::sin(2.0 * std::numbers::pi * hz * i / rate + 0.3 + c));
        }
    }
    return audio;
}

Lv2Bundle& Lv2Bundle::Get() {
    static Lv2Bundle bundle;
    return bundle;
}

Lv2Bundle::Lv2Bundle() : world_(lilv_world_new()) {
    lilv_world_load_all(world_);
}

Lv2Bundle::~Lv2Bundle() {
    for (auto& entry : nodes_)
        lilv_node_free(entry.second);
    lilv_world_free(world_);
}

const LilvNode* Lv2Bundle::Node(const std::string& uri) {
    LilvNode*& node = nodes_[uri];
    if (node == nullptr) node = lilv_new_uri(world_, uri.c_str());
    return node;
}

const LilvPlugin* Lv2Bundle::Plugin(const std::string& uri) {
    return lilv_plugins_get_by_uri(lilv_world_get_all_plugins(world_), Node(uri));
}

namespace {

int LogVprintf(LV2_Log_Handle handle, LV2_URID, const char* format, va_list ap) {
    std::array<char, 2048> line{};
    const int written = std::vsnprintf(line.data(), line.size(), format, ap);
    static_cast<std::vector<std::string>*>(handle)->emplace_back(line.data());
    return written;
}

int LogPrintf(LV2_Log_Handle handle, LV2_URID type, const char* format, ...) {
    va_list ap;
    va_start(ap, format);
    const int written = LogVprintf(handle, type, format, ap);
    va_end(ap);
    return written;
}

}  // namespace

Lv2TestInstance::Lv2TestInstance(int channels, double rate, Lv2HostOptions options)
    : channels_(channels),
      maxBlock_(options.maxBlockLength),
      plugin_(Lv2Bundle::Get().Plugin(Lv2PluginUri(channels))) {
    if (plugin_ == nullptr) return;
    uris_.reserve(256);  // unmapped texts stay where they are
    map_ = {this, [](LV2_URID_Map_Handle self, const char* uri) {
                return static_cast<Lv2TestInstance*>(self)->Map(uri);
            }};
    unmap_ = {this, [](LV2_URID_Unmap_Handle self, LV2_URID urid) -> const char* {
                  const auto& uris = static_cast<Lv2TestInstance*>(self)->uris_;
                  return urid >= 1 && urid <= uris.size() ? uris[urid - 1].c_str() : nullptr;
              }};
    log_ = {&logLines_, LogPrintf, LogVprintf};
    schedule_ = {this, [](LV2_Worker_Schedule_Handle handle, uint32_t size, const void* data) {
                     auto* self = static_cast<Lv2TestInstance*>(handle);
                     if (self->queued_ == self->work_.size() || size > sizeof(Work::bytes)) {
                         return LV2_WORKER_ERR_NO_SPACE;
                     }
                     Work& work = self->work_[self->queued_++];
                     work.size = size;
                     std::memcpy(work.bytes.data(), data, size);
                     return LV2_WORKER_SUCCESS;
                 }};
    options_ = {{LV2_OPTIONS_INSTANCE, 0, Map(LV2_BUF_SIZE__maxBlockLength), sizeof maxBlock_,
                 Map(LV2_ATOM__Int), &maxBlock_},
                {LV2_OPTIONS_INSTANCE, 0, 0, 0, 0, nullptr}};
    featureStore_ = {{LV2_URID__map, &map_},
                     {LV2_URID__unmap, &unmap_},
                     {LV2_OPTIONS__options, options_.data()}};
    if (options.log) featureStore_.push_back({LV2_LOG__log, &log_});
    if (options.worker) featureStore_.push_back({LV2_WORKER__schedule, &schedule_});
    for (const LV2_Feature& feature : featureStore_)
        features_.push_back(&feature);
    features_.push_back(nullptr);
    instance_ = lilv_plugin_instantiate(plugin_, rate, features_.data());
    if (instance_ == nullptr) return;
    ConnectPorts();
    lilv_instance_activate(instance_);
}

Lv2TestInstance::~Lv2TestInstance() {
    if (instance_ == nullptr) return;
    lilv_instance_deactivate(instance_);
    lilv_instance_free(instance_);
}

// Control ports start at their defaults; audio inputs and outputs get buffers in port order.
void Lv2TestInstance::ConnectPorts() {
    const uint32_t ports = lilv_plugin_get_num_ports(plugin_);
    controls_.assign(ports, 0.0f);
    std::vector<float> defaults(ports);
    lilv_plugin_get_port_ranges_float(plugin_, nullptr, nullptr, defaults.data());
    Lv2Bundle& bundle = Lv2Bundle::Get();
    std::vector<uint32_t> inputs, outputs;
    for (uint32_t i = 0; i < ports; ++i) {
        const LilvPort* port = lilv_plugin_get_port_by_index(plugin_, i);
        if (lilv_port_is_a(plugin_, port, bundle.Node(LV2_CORE__AudioPort))) {
            (lilv_port_is_a(plugin_, port, bundle.Node(LV2_CORE__InputPort)) ? inputs : outputs)
                .push_back(i);
            continue;
        }
        if (!std::isnan(defaults[i])) controls_[i] = defaults[i];
        lilv_instance_connect_port(instance_, i, &controls_[i]);
    }
    inputs.insert(inputs.end(), outputs.begin(), outputs.end());
    audio_.assign(inputs.size(), std::vector<float>(maxBlock_));
    for (std::size_t k = 0; k < inputs.size(); ++k)
        lilv_instance_connect_port(instance_, inputs[k], audio_[k].data());
}

std::uint32_t Lv2TestInstance::PortIndex(const std::string& symbol) const {
    LilvNode* node = lilv_new_string(Lv2Bundle::Get().World(), symbol.c_str());
    const LilvPort* port = lilv_plugin_get_port_by_symbol(plugin_, node);
    lilv_node_free(node);
    EXPECT_NE(port, nullptr) << symbol;
    return port != nullptr ? lilv_port_get_index(plugin_, port) : 0;
}

const void* Lv2TestInstance::Extension(const char* uri) const {
    return lilv_instance_get_extension_data(instance_, uri);
}

LV2_URID Lv2TestInstance::Map(const char* uri) {
    const auto found = std::find(uris_.begin(), uris_.end(), uri);
    if (found != uris_.end()) return static_cast<LV2_URID>(found - uris_.begin() + 1);
    uris_.emplace_back(uri);
    return static_cast<LV2_URID>(uris_.size());
}

std::vector<Lv2TestInstance::Work> Lv2TestInstance::TakeQueuedWork() {
    std::vector<Work> taken(work_.begin(), work_.begin() + static_cast<std::ptrdiff_t>(queued_));
    queued_ = 0;
    return taken;
}

void Lv2TestInstance::DoWork(const Work& work) {
    ++workDone_;
    const auto* worker = static_cast<const LV2_Worker_Interface*>(Extension(LV2_WORKER__interface));
    worker->work(lilv_instance_get_handle(instance_), nullptr, nullptr, work.size,
                 work.bytes.data());
}

void Lv2TestInstance::Reactivate() {
    lilv_instance_deactivate(instance_);
    lilv_instance_activate(instance_);
}

std::map<std::string, std::string> Lv2TestInstance::SaveStateValues() {
    const auto* state = static_cast<const LV2_State_Interface*>(Extension(LV2_STATE__interface));
    struct Store {
        Lv2TestInstance* self;
        std::map<std::string, std::string> values;
    } stored{this, {}};
    const auto store = [](LV2_State_Handle handle, uint32_t key, const void* data, size_t size,
                          uint32_t, uint32_t) {
        auto* into = static_cast<Store*>(handle);
        into->values[into->self->uris_[key - 1]].assign(static_cast<const char*>(data), size);
        return LV2_STATE_SUCCESS;
    };
    state->save(lilv_instance_get_handle(instance_), store, &stored, 0, features_.data());
    return stored.values;
}

std::string Lv2TestInstance::SaveSettingsValue() {
    return SaveStateValues()[kLv2SettingsKeyUri];
}

int Lv2TestInstance::RestoreSettingsValue(const std::string& value, const char* typeUri) {
    const auto* state = static_cast<const LV2_State_Interface*>(Extension(LV2_STATE__interface));
    struct Stored {
        const std::string* text;
        LV2_URID type;
    } stored{&value, Map(typeUri)};
    const auto retrieve = [](LV2_State_Handle handle, uint32_t, size_t* size, uint32_t* type,
                             uint32_t* flags) -> const void* {
        const auto* entry = static_cast<const Stored*>(handle);
        *size = entry->text->size() + 1;
        *type = entry->type;
        *flags = LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE;
        return entry->text->c_str();
    };
    return state->restore(lilv_instance_get_handle(instance_), retrieve, &stored, 0,
                          features_.data());
}

void Lv2TestInstance::SetPortValue(const char* symbol, void* self, const void* value, uint32_t size,
                                   uint32_t type) {
    auto* instance = static_cast<Lv2TestInstance*>(self);
    ASSERT_EQ(type, instance->Map(LV2_ATOM__Float)) << symbol;
    ASSERT_EQ(size, sizeof(float)) << symbol;
    float number = *static_cast<const float*>(value);
    if (instance->portDigits_ > 0) {
        std::array<char, 64> text{};
        std::snprintf(text.data(), text.size(), "%.*g", instance->portDigits_,
                      static_cast<double>(number));
        number = std::strtof(text.data(), nullptr);
    }
    instance->Set(symbol, number);
}

void Lv2TestInstance::LoadPreset(const std::string& uri, bool ports) {
    LilvWorld* world = Lv2Bundle::Get().World();
    const LilvNode* preset = Lv2Bundle::Get().Node(uri);
    lilv_world_load_resource(world, preset);
    LilvState* state = lilv_state_new_from_world(world, &map_, preset);
    ASSERT_NE(state, nullptr) << uri;
    portDigits_ = 0;
    lilv_state_restore(state, instance_, ports ? SetPortValue : nullptr, this, 0, features_.data());
    lilv_state_free(state);
}

std::string Lv2TestInstance::SaveSession() {
    const auto value = [](const char* symbol, void* self, uint32_t* size,
                          uint32_t* type) -> const void* {
        auto* instance = static_cast<Lv2TestInstance*>(self);
        *size = sizeof(float);
        *type = instance->Map(LV2_ATOM__Float);
        return &instance->controls_[instance->PortIndex(symbol)];
    };
    LilvState* state =
        lilv_state_new_from_instance(plugin_, instance_, &map_, nullptr, nullptr, nullptr, nullptr,
                                     value, this, 0, features_.data());
    char* text = lilv_state_to_string(Lv2Bundle::Get().World(), &map_, &unmap_, state,
                                      "urn:vorix:test:session", nullptr);
    std::string session = text != nullptr ? text : "";
    lilv_free(text);
    lilv_state_free(state);
    return session;
}

LilvState* Lv2TestInstance::ReadSession(const std::string& session) {
    LilvState* state = lilv_state_new_from_string(Lv2Bundle::Get().World(), &map_, session.c_str());
    EXPECT_NE(state, nullptr) << session;
    return state;
}

void Lv2TestInstance::RestoreSessionState(const std::string& session) {
    LilvState* state = ReadSession(session);
    lilv_state_restore(state, instance_, nullptr, nullptr, 0, features_.data());
    lilv_state_free(state);
}

void Lv2TestInstance::RestoreSessionPorts(const std::string& session, int digits) {
    LilvState* state = ReadSession(session);
    portDigits_ = digits;
    lilv_state_emit_port_values(state, SetPortValue, this);
    portDigits_ = 0;
    lilv_state_free(state);
}

namespace {

std::map<std::string, float> PortValuesIn(const LilvState* state) {
    std::map<std::string, float> values;
    if (state == nullptr) return values;
    lilv_state_emit_port_values(
        state,
        [](const char* symbol, void* into, const void* value, uint32_t, uint32_t) {
            (*static_cast<std::map<std::string, float>*>(into))[symbol] =
                *static_cast<const float*>(value);
        },
        &values);
    return values;
}

}  // namespace

std::map<std::string, float> Lv2TestInstance::PortValuesOf(const std::string& session) {
    LilvState* state = ReadSession(session);
    std::map<std::string, float> values = PortValuesIn(state);
    lilv_state_free(state);
    return values;
}

std::map<std::string, float> Lv2TestInstance::PresetPortValues(const std::string& uri) {
    LilvWorld* world = Lv2Bundle::Get().World();
    const LilvNode* preset = Lv2Bundle::Get().Node(uri);
    lilv_world_load_resource(world, preset);
    std::vector<std::string> uris;
    LV2_URID_Map map{&uris, [](LV2_URID_Map_Handle handle, const char* text) {
                         auto& known = *static_cast<std::vector<std::string>*>(handle);
                         known.emplace_back(text);
                         return static_cast<LV2_URID>(known.size());
                     }};
    LilvState* state = lilv_state_new_from_world(world, &map, preset);
    std::map<std::string, float> values = PortValuesIn(state);
    lilv_state_free(state);
    return values;
}

}  // namespace vorix::test
