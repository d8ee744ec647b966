#ifndef VARNO_APPS_VARNO_PROGRAM_H
#define VARNO_APPS_VARNO_PROGRAM_H

#include "CommandLine/CommandTable.h"

#include <string>
#include <vector>

namespace varno {

/// The program with all its commands: the one source of parsing, help, shell completion and manual page.
const ProgramEntry& program();

/// The command of that name, null if there is none.
const CommandEntry* findCommand(std::string_view name);

/// Runs the command that the arguments name. @param words the arguments without the program's name
/// @return the exit status
/// @throws CommandError, HostError where it cannot
int runProgram(const std::vector<std::string>& words);

} // namespace varno

#endif
