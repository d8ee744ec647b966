/// The plug-ins of the bundle and their ports, made from the module's description: the one list that the
/// plug-in, its description and its window use.
#ifndef VARNO_FORMATS_LV2_PORTS_H
#define VARNO_FORMATS_LV2_PORTS_H

#include "Host/Instance.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// One plug-in of the bundle.
struct PluginUri {
    const char* uri;
    std::int32_t channels; ///< Inputs, and as many outputs.
};

/// The plug-ins in the order of the binary's descriptors.
inline constexpr std::array kPluginUris = {PluginUri{"urn:morvak:varno-s#mono", 1},
                                           PluginUri{"urn:morvak:varno-s#stereo", 2}};
/// The window of both.
inline constexpr const char* kWindowUri = "urn:morvak:varno-s#ui";

/// What a port carries.
enum class PortKind {
    kAudioIn,
    kAudioOut,
    kParameter, ///< Input: the normalized value of a saved parameter, 0 to 1.
    kEnabled,   ///< Input: the host's bypass; 0 or less bypasses.
    kMeter,     ///< Output: what a meter of the effect shows, 1.0 is its full scale.
    kLatency,   ///< Output: latency of the sound in frames.
    kQuality,   ///< Input: the factor of oversampling; see factorOfPort.
};

/// One port. Hosts save symbols and some go by indices: neither may ever change.
struct PortInfo {
    std::uint32_t index; ///< As hosts connect it.
    std::string symbol;  ///< Letters, digits and underscores.
    PortKind kind;
    std::uint32_t item;      ///< Channel; index of the parameter in the module; meter tap; else 0.
    std::string parameterID; ///< Identifier in the module; empty for what is no parameter.
};

/// The ports of the instance's variant in the order of their indices: audio inputs, audio outputs, every
/// parameter but the master bypass, enabled, meters, latency, quality. Throws std::out_of_range for a
/// parameter or meter without a row in PortTexts.h. [any]
std::vector<PortInfo> portsOf(const Instance& instance);

/// The factor of oversampling that a value of the port `quality` means: of one that there is not, the next
/// lower one, 1 at least. [any]
std::int32_t factorOfPort(float value) noexcept;

/// The port of this symbol, null when there is none. [any]
const PortInfo* portWithSymbol(std::span<const PortInfo> ports, std::string_view symbol);

/// The port of this parameter (exact identifier), null when there is none, as for the master bypass. [any]
const PortInfo* portOfParameter(std::span<const PortInfo> ports, std::string_view parameterID);

} // namespace varno

#endif
