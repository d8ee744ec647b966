/// The programs beside varno that run some of its commands.
#ifndef VARNO_APPS_VARNO_OTHERPROGRAMS_H
#define VARNO_APPS_VARNO_OTHERPROGRAMS_H

#include "CommandLine/CommandLine.h"

namespace varno {

/// Each runs a command by another program in the place of this one: the process remains the same, with its
/// standard streams and its terminal. Returns only by an exception. [main]
/// @throws WorkError where that program is missing or cannot be started

/// By varno-window.
[[noreturn]] int startWindowProgram(const CommandLine& line);
/// By varno-validate.
[[noreturn]] int startValidateProgram(const CommandLine& line);

} // namespace varno

#endif
