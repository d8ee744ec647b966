#ifndef VARNO_APPS_VARNO_WINDOWPROGRAM_H
#define VARNO_APPS_VARNO_WINDOWPROGRAM_H

#include "CommandLine/CommandLine.h"

namespace varno {

/// Runs a command by the program varno-window in the place of this one: the process remains the same, with
/// its standard streams and its terminal. Returns only by an exception. [main]
/// @throws WorkError where that program is missing or cannot be started
[[noreturn]] int startWindowProgram(const CommandLine& line);

} // namespace varno

#endif
