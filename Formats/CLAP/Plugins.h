/// The plug-ins of the binary.
#ifndef VARNO_FORMATS_CLAP_PLUGINS_H
#define VARNO_FORMATS_CLAP_PLUGINS_H

#include "CLAP/Clap/Plugin.h"

#include <array>
#include <cstdint>

namespace varno {

/// One of them. Hosts save its identifier: it never changes.
struct OfferedPlugin {
    clap_plugin_descriptor_t descriptor;
    std::int32_t channels; ///< Inputs, and as many outputs.
};

inline constexpr const char* kMonoFeatures[] = {
    CLAP_PLUGIN_FEATURE_AUDIO_EFFECT, CLAP_PLUGIN_FEATURE_DISTORTION, CLAP_PLUGIN_FEATURE_COMPRESSOR,
    CLAP_PLUGIN_FEATURE_MONO, nullptr};
inline constexpr const char* kStereoFeatures[] = {
    CLAP_PLUGIN_FEATURE_AUDIO_EFFECT, CLAP_PLUGIN_FEATURE_DISTORTION, CLAP_PLUGIN_FEATURE_COMPRESSOR,
    CLAP_PLUGIN_FEATURE_STEREO, nullptr};

/// A description that hosts show. @param id, name of the plug-in @param features end with null [any]
constexpr clap_plugin_descriptor_t describedPlugin(const char* id, const char* name,
                                                   const char* const* features) {
    return {.clap_version = CLAP_VERSION,
            .id = id,
            .name = name,
            .vendor = "Morvak",
            .url = "",
            .manual_url = "",
            .support_url = "",
            .version = VARNO_VERSION,
            .description = "Saturation and overdrive with dynamics",
            .features = features};
}

/// In the order of the factory.
inline constexpr std::array kClapPlugins = {
    OfferedPlugin{describedPlugin("com.morvak.varno-s.mono", "Varno-S Mono", kMonoFeatures), 1},
    OfferedPlugin{describedPlugin("com.morvak.varno-s.stereo", "Varno-S Stereo", kStereoFeatures), 2}};

} // namespace varno

#endif
