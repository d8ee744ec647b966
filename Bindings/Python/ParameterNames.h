/// What scripts call the parameters.
#ifndef VARNO_BINDINGS_PYTHON_PARAMETERNAMES_H
#define VARNO_BINDINGS_PYTHON_PARAMETERNAMES_H

#include "DemoGain_ParameterTable.h"

#include <string>

namespace varno {

/// How scripts give a parameter's true value.
enum class TrueKind {
    kNumber,   ///< A number in the parameter's unit.
    kNumbered, ///< The number of a choice, from 1.
    kSwitch,   ///< True or False.
};
TrueKind trueKindOf(const SDemoGain_Parameter& row);

/// The name of the normalized value: the identifier in lower case; "bypass" for the master bypass.
std::string normalizedName(const SDemoGain_Parameter& row);

/// The name of the true value: the same with the unit, "gain_db", "mix_percent", "atk_ms", "ratio_curve",
/// "hp_on".
std::string trueName(const SDemoGain_Parameter& row);

/// A true value as the effect reads it: "-3 dB", "#5", "on". @param value finite or not; of a choice its
///        number from 1, of a switch 0 or 1
std::string trueValueText(const SDemoGain_Parameter& row, double value);

} // namespace varno

#endif
