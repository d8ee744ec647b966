/// True values of parameters, in their units, as people type and read them at a control.
#ifndef VARNO_SURROUND_SETTINGS_TRUEVALUE_H
#define VARNO_SURROUND_SETTINGS_TRUEVALUE_H

#include "DemoGain_ParameterTable.h"
#include "DemoGain_ValueText.h"
#include "Host/Instance.h"

#include <optional>
#include <string>
#include <string_view>

namespace varno {

/// What the true values of an instance's times depend on, as it is now. [main]
DemoGain_ValueText::Settings unitSettings(const Instance& instance);

/// Whether the true value of a parameter depends on other parameters, so that those must be set first. [any]
bool dependsOnOthers(const std::string& id);

/// The normalized value of a step. @param step 0 to steps - 1 @param steps of the parameter, at least 2 [any]
double normalizedOfStep(int step, int steps);

/// Whether a parameter is a choice of things that have numbers, as the eight curves. [any]
bool hasNumberedChoices(const SDemoGain_Parameter& row);

/// Whether a parameter is a choice of things that have names, as the states of a switch. [any]
bool hasNamedChoices(const SDemoGain_Parameter& row);

/// Whether a number needs its unit to be a true value.
enum class UnitText { kRequired, kOptional };

/// The normalized value for a true value: a name of a choice, or a number in the parameter's unit. Nothing
/// where the text is none, or is out of range by more than what rounding in the texts of the range can make.
/// @param settings that times belong to [any]
std::optional<double> normalizedFromTrueText(const SDemoGain_Parameter& row, std::string_view text,
                                             const DemoGain_ValueText::Settings& settings, UnitText unit);

/// The true value as people say it: "-3.0 dB", "2.40 ms", "curve 5", "on"; empty for a parameter that Varno-S
/// does not have. @param settings that times belong to [any]
std::string spokenValue(std::string_view id, double normalized, const DemoGain_ValueText::Settings& settings);

/// What a text that was typed at a control means.
struct TypedValue {
    std::optional<double> normalized;
    /// Where there is no value, the reason as a sentence that names what was expected:
    /// `Gain: expected a level from -20 to 20 dB, found "loud"`.
    std::string refusal;
};

/// Reads what was typed at a control: a number in the parameter's unit, with the unit or without ("-3 dB",
/// "2.4", "0.1 s", "40 %"), a curve ("5", "curve 5", "#5"), a state of a switch ("on", "0"). Capitals and
/// blanks do not matter, a comma is a point. @param id of a parameter that Varno-S has
/// @param settings that times belong to [any]
TypedValue typedValue(std::string_view id, std::string_view text,
                      const DemoGain_ValueText::Settings& settings);

} // namespace varno

#endif
