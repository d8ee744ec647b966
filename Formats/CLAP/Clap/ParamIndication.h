/// The extension of CLAP for marks beside parameters, as Clap/Plugin.h.
#ifndef VARNO_FORMATS_CLAP_CLAP_PARAMINDICATION_H
#define VARNO_FORMATS_CLAP_CLAP_PARAMINDICATION_H

#include "CLAP/Clap/Plugin.h"

extern "C" {

struct clap_color_t {
    std::uint8_t alpha;
    std::uint8_t red;
    std::uint8_t green;
    std::uint8_t blue;
};

/// What a plug-in has for marks. A host's colours and texts are borrowed for the call and may be null.
struct clap_plugin_param_indication_t {
    /// @param label of the controller, short @param description of the mapping, for a tip [main]
    void (*set_mapping)(const clap_plugin_t* plugin, clap_id parameter, bool has_mapping,
                        const clap_color_t* color, const char* label, const char* description);
    /// @param state CLAP_PARAM_INDICATION_AUTOMATION_... [main]
    void (*set_automation)(const clap_plugin_t* plugin, clap_id parameter, std::uint32_t state,
                           const clap_color_t* color);
};

} // extern "C"

inline constexpr char CLAP_EXT_PARAM_INDICATION[] = "clap.param-indication/4";
/// The name that hosts of before version 1.2 know it by.
inline constexpr char CLAP_EXT_PARAM_INDICATION_COMPAT[] = "clap.param-indication.draft/4";

inline constexpr std::uint32_t CLAP_PARAM_INDICATION_AUTOMATION_NONE = 0;
inline constexpr std::uint32_t CLAP_PARAM_INDICATION_AUTOMATION_PRESENT = 1;
inline constexpr std::uint32_t CLAP_PARAM_INDICATION_AUTOMATION_PLAYING = 2;
inline constexpr std::uint32_t CLAP_PARAM_INDICATION_AUTOMATION_RECORDING = 3;
inline constexpr std::uint32_t CLAP_PARAM_INDICATION_AUTOMATION_OVERRIDING = 4;

#endif
