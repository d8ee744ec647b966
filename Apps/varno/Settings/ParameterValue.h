#ifndef VARNO_APPS_VARNO_SETTINGS_PARAMETERVALUE_H
#define VARNO_APPS_VARNO_SETTINGS_PARAMETERVALUE_H

#include "Host/Instance.h"

#include <string>

namespace varno {

/// A parameter and a value for it, as a user wrote them.
struct ParameterText {
    std::string id;
    std::string value;
};

/// Splits "ID=VALUE". @throws UsageError where it is none
ParameterText parameterTextFromOption(const std::string& text);

/// The normalized value that a text means: a number is that normalized value, 0 to 1; any other text is one
/// that the parameter itself shows, such as "on".
/// @param where the text stands ("--set Hot=2", "moves.csv, line 3"), for messages
/// @param exitStatus of the error
/// @throws CommandError for an unknown parameter, a number out of range, or a text that the parameter does
///         not understand
double normalizedFromText(const Instance& instance, const ParameterText& text, const std::string& where,
                          int exitStatus);

/// The parameter of that name. @throws CommandError with a suggestion where there is none
/// @param where as above; empty for none
const ParameterInfo& requireParameter(const Instance& instance, const std::string& id,
                                      const std::string& where, int exitStatus);

/// The normalized value of a step. @param step 0 to steps - 1 @param steps of the parameter, at least 2
double normalizedOfStep(int step, int steps);

} // namespace varno

#endif
