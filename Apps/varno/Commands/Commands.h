#ifndef VARNO_APPS_VARNO_COMMANDS_COMMANDS_H
#define VARNO_APPS_VARNO_COMMANDS_COMMANDS_H

#include "CommandLine.h"

#include <string>
#include <vector>

namespace varno {

/// Does what the words behind the program's name ask for.
/// @return the exit status
/// @throws CommandError where it cannot
int runProgram(const std::vector<std::string>& words);

// Each command takes its checked command line and returns an exit status. They throw CommandError or
// HostError.
int runRender(const CommandLine& line);
int runEdit(const CommandLine& line);
int runPlay(const CommandLine& line);
int runDescribe(const CommandLine& line);
int runParams(const CommandLine& line);
int runPresets(const CommandLine& line);
int runCompletion(const CommandLine& line);
int runMan(const CommandLine& line);

} // namespace varno

#endif
