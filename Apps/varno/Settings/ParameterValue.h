#ifndef VARNO_APPS_VARNO_SETTINGS_PARAMETERVALUE_H
#define VARNO_APPS_VARNO_SETTINGS_PARAMETERVALUE_H

#include "DemoGain_ValueText.h"
#include "Host/Instance.h"
#include "Surround/Settings/TrueValue.h"

#include <string>

namespace varno {

/// A parameter and a value for it, as a user wrote them.
struct ParameterText {
    std::string id;
    std::string value;
};

/// Splits "ID=VALUE". @throws UsageError where it is none
ParameterText parameterTextFromOption(const std::string& text);

/// The normalized value that a text means. A number is that normalized value, 0 to 1; a number with a unit is
/// a true value ("-3 dB", "2.4 ms", "40 %"), "#5" the fifth curve, and other texts are those that the
/// parameter itself shows ("bypass") or a switch has ("off", "on").
/// @param settings that times belong to
/// @param where the text stands ("--set Hot=2", "moves.csv, line 3"), for messages
/// @param exitStatus of the error
/// @throws CommandError for an unknown parameter, a value out of range, or a text that the parameter does not
///         understand
double normalizedFromText(const Instance& instance, const ParameterText& text,
                          const DemoGain_ValueText::Settings& settings, const std::string& where,
                          int exitStatus);

/// The true value of a parameter at a normalized value, as normalizedFromText() reads it: "-3.0 dB", "#5",
/// "on"; empty for a parameter that Varno-S does not have. @param settings that times belong to
std::string trueText(const std::string& id, double normalized, const DemoGain_ValueText::Settings& settings);

/// The true value of a parameter of an instance as it is now; empty as above.
std::string trueText(const Instance& instance, const std::string& id);

/// The parameter of that name. @throws CommandError with a suggestion where there is none
/// @param where as above; empty for none
const ParameterInfo& requireParameter(const Instance& instance, const std::string& id,
                                      const std::string& where, int exitStatus);

} // namespace varno

#endif
