/// A port in the description that hosts read.
#ifndef VARNO_FORMATS_LV2_DESCRIPTION_PORTSTATEMENT_H
#define VARNO_FORMATS_LV2_DESCRIPTION_PORTSTATEMENT_H

#include "Host/Instance.h"
#include "LV2/Ports.h"

#include <string>
#include <string_view>

namespace varno {

/// Symbols of the groups of audio ports. Controls are in none: GStreamer treats every port of a group as an
/// audio channel.
inline constexpr const char* kInputGroup = "input";
inline constexpr const char* kOutputGroup = "output";

/// The URI of a group of a plug-in's ports.
std::string groupUri(const PluginUri& plugin, std::string_view symbol);

/// Everything about a port, as an object of the statement about the plug-in.
std::string portStatement(const Instance& instance, const PluginUri& plugin, const PortInfo& port);

} // namespace varno

#endif
