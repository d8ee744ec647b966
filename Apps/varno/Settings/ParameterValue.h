#ifndef VARNO_APPS_VARNO_SETTINGS_PARAMETERVALUE_H
#define VARNO_APPS_VARNO_SETTINGS_PARAMETERVALUE_H

#include "DemoGain_ValueText.h"
#include "Host/Instance.h"
#include "Surround/Settings/TrueValue.h"
#include "Surround/Settings/WrittenValue.h"

#include <string>

namespace varno {

/// Splits "ID=VALUE". @throws UsageError where it is none
ParameterText parameterTextFromOption(const std::string& text);

/// The normalized value that a text means, as writtenValue() reads it.
/// @param settings that times belong to
/// @param where the text stands ("--set Hot=2", "moves.csv, line 3"), for messages
/// @param exitStatus of the error
/// @throws CommandError for an unknown parameter, a value out of range, or a text that the parameter does not
///         understand
double normalizedFromText(const Instance& instance, const ParameterText& text,
                          const DemoGain_ValueText::Settings& settings, const std::string& where,
                          int exitStatus);

/// The parameter of that name. @throws CommandError with a suggestion where there is none
/// @param where as above; empty for none
const ParameterInfo& requireParameter(const Instance& instance, const std::string& id,
                                      const std::string& where, int exitStatus);

} // namespace varno

#endif
