/// Symbols and texts of the LV2 ports of parameters and meters, which the module itself does not have.
#ifndef VARNO_FORMATS_LV2_PORTTEXTS_H
#define VARNO_FORMATS_LV2_PORTTEXTS_H

#include "DemoGain_ParameterTable.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace varno {

/// One port.
struct PortText {
    std::string_view name; ///< Identifier of the parameter, or name of the meter in the module.
    const char* symbol;    ///< Hosts save it: it must never change.
    const char* comment;   ///< For the user.
};

/// The parameters, in any order. The master bypass has no port of its own: "enabled" has its place.
inline constexpr PortText kParameterPorts[] = {
    {"Gain", "gain", "Input gain, from -20 dB at 0 over 0 dB at 0.5 to +20 dB at 1."},
    {"HP", "hp", "Keeps what lies below 120 Hz from driving the gain reduction."},
    {"Band", "band", "Lets high frequencies drive the gain reduction harder."},
    {"Atk", "atk", "Attack of the gain reduction: fast at 0, slow at 1."},
    {"Rls", "rls", "Release of the gain reduction: fast at 0, slow at 1."},
    {"ASw", "asw",
     "Lets the editor match the output volume to the input level; without the editor it does nothing."},
    {"UK", "uk", "Changes the release of the gain reduction."},
    {"Volume", "volume", "Output volume, from -20 dB at 0 over 0 dB at 0.5 to +20 dB at 1."},
    {"Hot", "hot", "Drive into the clipper and shaper."},
    {"Ratio", "ratio", "Chooses one of eight gain reduction curves."},
    {"Mix", "mix", "Share of the dry signal: none at 0, nothing else at 1."},
    {"HSw", "hsw", "Biases the clipper, for more harmonics."},
    {"LinkSw", "linksw", "Both stereo channels share one gain reduction."},
};

/// The meters, in any order.
inline constexpr PortText kMeterPorts[] = {
    {"GRL", "grl", "Gain reduction: 1 is a reduction by 32 dB. A peak stays for 40 ms at least."},
    {"GRR", "grr", "Gain reduction, the same as that of the left channel. A peak stays for 40 ms at least."},
    {"InRMS", "inrms", "Averaged input level of the first channel, linear: 1 is full scale."},
    {"OutRMS", "outrms",
     "Averaged output level of the first channel before the volume, linear: 1 is full scale."},
};

/// Whether exactly one port is that of each parameter but the master bypass, and no port is left over.
constexpr bool haveParametersOnePortEach() {
    const auto isBypass = [](const SDemoGain_Parameter& row) {
        return std::string_view(row.mIdentifier) == cDemoGain_MasterBypassID;
    };
    const auto portsOf = [](const SDemoGain_Parameter& row) {
        return std::ranges::count(kParameterPorts, row.mIdentifier, &PortText::name);
    };
    return std::ranges::all_of(
               kDemoGain_Parameters,
               [&](const SDemoGain_Parameter& row) { return portsOf(row) == (isBypass(row) ? 0 : 1); }) &&
           std::size(kParameterPorts) + 1 == std::size(kDemoGain_Parameters);
}
static_assert(haveParametersOnePortEach(), "a parameter of the effect has no row here, or a row has none");

/// The row of a parameter or meter. Throws std::out_of_range for one that has none. [any]
inline const PortText& portText(std::span<const PortText> rows, std::string_view name) {
    const auto found = std::ranges::find(rows, name, &PortText::name);
    if (found == rows.end()) {
        throw std::out_of_range("there is no text about the port of " + std::string(name));
    }
    return *found;
}

} // namespace varno

#endif
