#pragma once

#include <cstdint>
#include <string>

namespace vorix {

// The names under which the LV2 bundle presents Vorix to a host: the bundle's files, the two
// plug-ins, the key of the settings in a saved state, and the presets. Every URI lies in the
// project's own namespace; hosts key sessions and presets on them, so they never change.
inline constexpr const char* kLv2BundleName = "vorix.lv2";
inline constexpr const char* kLv2ManifestFile = "manifest.ttl";
inline constexpr const char* kLv2PluginsFile = "vorix.ttl";
inline constexpr const char* kLv2PresetsFile = "presets.ttl";

inline constexpr const char* kLv2Namespace = "https://vorix.invalid/plugins/vorix";
inline constexpr const char* kLv2StereoPluginUri = "https://vorix.invalid/plugins/vorix#stereo";
inline constexpr const char* kLv2MonoPluginUri = "https://vorix.invalid/plugins/vorix#mono";
// The state key whose value is the settings document, the text of the host chunk.
inline constexpr const char* kLv2SettingsKeyUri = "https://vorix.invalid/plugins/vorix#settings";
// The state key whose value is the port record: the values the host's control ports showed when
// the state was saved, which the ports may show again after a restore without acting.
inline constexpr const char* kLv2PortValuesKeyUri = "https://vorix.invalid/plugins/vorix#ports";

// The licence the plug-ins' description names.
inline constexpr const char* kLv2LicenseUri = "https://vorix.invalid/plugins/vorix#license";

// The version of both plug-ins, as LV2 counts it: the minor number grows with every change of the
// ports that a host must know of (a port added, moved or turned around), the micro number with
// every other release; odd numbers mark development builds. 2.0: the first release that states
// a version, with the session counter as an output and the ports in stereo or mono groups.
inline constexpr int kLv2MinorVersion = 2;
inline constexpr int kLv2MicroVersion = 0;

// The plug-ins in the order of the module's descriptor indices: stereo first, as the product
// lists its channel pairs.
inline constexpr std::int32_t kLv2PluginCount = 2;

// The channels of the plug-in at descriptor `index` (2, then 1); 0 for an index beyond them.
constexpr std::int32_t Lv2PluginChannels(std::uint32_t index) {
    return index == 0 ? 2 : index == 1 ? 1 : 0;
}

// The URI of the plug-in with `channels` channels.
constexpr const char* Lv2PluginUri(std::int32_t channels) {
    return channels == 1 ? kLv2MonoPluginUri : kLv2StereoPluginUri;
}

// The URI of factory program `number` as a preset of the plug-in with `channels` channels:
// "...#stereo-preset-3".
std::string Lv2PresetUri(std::int32_t channels, std::int32_t number);

}  // namespace vorix
