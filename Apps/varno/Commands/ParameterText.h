#ifndef VARNO_APPS_VARNO_COMMANDS_PARAMETERTEXT_H
#define VARNO_APPS_VARNO_COMMANDS_PARAMETERTEXT_H

#include "Host/Instance.h"

#include <string>

namespace varno {

/// The parameters as a table for people.
std::string parametersText(const Instance& instance);

/// The parameters as a JSON array.
std::string parametersJson(const Instance& instance);

/// One parameter with the value and text of each step, for people.
std::string parameterText(const Instance& instance, const ParameterInfo& parameter);

/// One parameter as a JSON object with an array of its steps.
std::string parameterJson(const Instance& instance, const ParameterInfo& parameter);

} // namespace varno

#endif
