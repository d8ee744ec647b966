/// A port in the description that hosts read, with the texts that the module itself does not have.
#ifndef VARNO_FORMATS_LV2_DESCRIPTION_PORTSTATEMENT_H
#define VARNO_FORMATS_LV2_DESCRIPTION_PORTSTATEMENT_H

#include "Host/Instance.h"
#include "LV2/Ports.h"

#include <span>
#include <string>
#include <string_view>

namespace varno {

/// What the values of a parameter mean.
enum class ValueMeaning {
    kPlain,
    kLevel, ///< kLevelLowDB at 0 to kLevelHighDB at 1.
    kCurve, ///< The number of a curve, from 1.
};

/// One parameter.
struct ParameterPortText {
    const char* parameterID;
    ValueMeaning meaning;
    const char* comment;
};

/// The range of the levels, and those that get a label, in dB.
inline constexpr float kLevelLowDB = -20.0F;
inline constexpr float kLevelHighDB = 20.0F;
inline constexpr int kLabelledLevelsDB[] = {-20, -15, -10, -6, -3, 0, 3, 6, 10, 15, 20};

/// The parameters, in any order.
std::span<const ParameterPortText> parameterPortTexts();
/// The text of a parameter. Throws std::out_of_range for one that has none.
const ParameterPortText& parameterPortText(std::string_view parameterID);

/// What a meter port shows. Throws std::out_of_range for a symbol that has no text.
const char* meterComment(std::string_view symbol);

/// Symbols of the groups of audio ports. Controls are in none: GStreamer treats every port of a group as an
/// audio channel.
inline constexpr const char* kInputGroup = "input";
inline constexpr const char* kOutputGroup = "output";

/// The URI of a group of a plug-in's ports.
std::string groupUri(const PluginUri& plugin, std::string_view symbol);

/// Everything about a port, as an object of the statement about the plug-in. Throws std::out_of_range for a
/// port without a text.
std::string portStatement(const Instance& instance, const PluginUri& plugin, const PortInfo& port);

} // namespace varno

#endif
