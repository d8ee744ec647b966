#include "CLAP/Window/Indications.h"

#include "CLAP/Clap/ParamIndication.h"
#include "CLAP/PluginExtensions.h"
#include "Surround/Settings/Characters.h"
#include "Surround/Settings/HostIndication.h"

#include <cstring>
#include <optional>
#include <string>

namespace varno {

namespace {

using Automation = HostIndication::Automation;

// Nothing where the host names none, or one that is not seen.
std::optional<std::uint32_t> colourOf(const clap_color_t* color) {
    constexpr int kRedShift = 16;
    constexpr int kGreenShift = 8;
    if (color == nullptr || color->alpha == 0) {
        return std::nullopt;
    }
    return std::uint32_t{color->red} << kRedShift | std::uint32_t{color->green} << kGreenShift | color->blue;
}

// Of any length and content: what is shown is a short line.
std::string lineOf(const char* text) {
    constexpr std::size_t kMostBytes = 200;
    return text == nullptr ? std::string() : safeText(std::string_view(text, strnlen(text, kMostBytes)));
}

// States of later versions of the interface are none.
Automation automationOf(std::uint32_t state) {
    switch (state) {
    case CLAP_PARAM_INDICATION_AUTOMATION_PRESENT:
        return Automation::kPresent;
    case CLAP_PARAM_INDICATION_AUTOMATION_PLAYING:
        return Automation::kPlaying;
    case CLAP_PARAM_INDICATION_AUTOMATION_RECORDING:
        return Automation::kRecording;
    case CLAP_PARAM_INDICATION_AUTOMATION_OVERRIDING:
        return Automation::kOverridden;
    default:
        return Automation::kNone;
    }
}

void setMapping(const clap_plugin_t* table, clap_id parameter, bool hasMapping, const clap_color_t* color,
                const char* label, const char* description) noexcept {
    guarded(table, [&](ClapPlugin& plugin) {
        if (HostIndication* const indication = plugin.indication(parameter)) {
            indication->isMapped = hasMapping;
            indication->mappingColour = hasMapping ? colourOf(color) : std::nullopt;
            indication->controller = hasMapping ? lineOf(label) : "";
            indication->mappingText = hasMapping ? lineOf(description) : "";
        }
    });
}

void setAutomation(const clap_plugin_t* table, clap_id parameter, std::uint32_t state,
                   const clap_color_t* color) noexcept {
    guarded(table, [&](ClapPlugin& plugin) {
        if (HostIndication* const indication = plugin.indication(parameter)) {
            indication->automation = automationOf(state);
            indication->automationColour = colourOf(color);
        }
    });
}

constexpr clap_plugin_param_indication_t kIndications = {setMapping, setAutomation};

} // namespace

const void* indicationExtension(std::string_view id) noexcept {
    return id == CLAP_EXT_PARAM_INDICATION || id == CLAP_EXT_PARAM_INDICATION_COMPAT ? &kIndications
                                                                                     : nullptr;
}

} // namespace varno
