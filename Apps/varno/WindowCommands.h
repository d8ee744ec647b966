/// What the commands with a window do. The program varno-window runs them.
#ifndef VARNO_APPS_VARNO_WINDOWCOMMANDS_H
#define VARNO_APPS_VARNO_WINDOWCOMMANDS_H

#include "CommandLine/CommandLine.h"

namespace varno {

/// Each returns the exit status and throws CommandError, HostError, FileError or WindowError. [main]
int runEdit(const CommandLine& line);
int runPlay(const CommandLine& line);

} // namespace varno

#endif
