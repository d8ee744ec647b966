/// What people are told about ports, and what the module itself does not tell.
#ifndef VARNO_FORMATS_LV2_DESCRIPTION_PORTTEXTS_H
#define VARNO_FORMATS_LV2_DESCRIPTION_PORTTEXTS_H

#include "LV2/Ports.h"

#include <span>

namespace varno {

/// What the values of a parameter mean.
enum class ValueMeaning {
    Plain,
    Level, ///< kLevelLowDB at 0 to kLevelHighDB at 1.
    Curve, ///< The number of a curve, from 1.
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

} // namespace varno

#endif
