/// What the two plug-ins of the bundle and their window are called; hosts keep these in saved sessions.
#ifndef VARNO_FORMATS_LV2_PLUGINURIS_H
#define VARNO_FORMATS_LV2_PLUGINURIS_H

#include <array>
#include <cstdint>

namespace varno {

/// One plug-in of the bundle.
struct PluginUri {
    const char* uri;
    std::int32_t channels; ///< Inputs, and as many outputs.
};

/// The plug-ins in the order in which the binary offers them.
inline constexpr std::array kPluginUris = {PluginUri{"urn:morvak:varno-s#mono", 1},
                                           PluginUri{"urn:morvak:varno-s#stereo", 2}};
/// The window of both.
inline constexpr const char* kWindowUri = "urn:morvak:varno-s#ui";

} // namespace varno

#endif
