/// What the commands with a window do. The program varno-window runs them.
#ifndef VARNO_APPS_VARNO_WINDOWCOMMANDS_H
#define VARNO_APPS_VARNO_WINDOWCOMMANDS_H

#include "CommandLine/CommandLine.h"

namespace varno {

/// Each returns the exit status and throws CommandError, HostError, FileError or WindowError. [main]
int runEdit(const CommandLine& line);
int runPlay(const CommandLine& line);

/// What varno-window contributes to varno doctor: prints the display and each sound system as a findingLine()
/// as soon as it is known. [main]
int answerDoctor(const CommandLine& line);

} // namespace varno

#endif
