#ifndef VARNO_APPS_VARNO_VALIDATE_VALIDATERUN_H
#define VARNO_APPS_VARNO_VALIDATE_VALIDATERUN_H

#include "CommandLine/CommandLine.h"

namespace varno::validate {

/// What varno validate does. Returns the exit status. [main]
/// @throws CommandError where there is no such plug-in or no process can be made
int runValidate(const CommandLine& line);

} // namespace varno::validate

#endif
