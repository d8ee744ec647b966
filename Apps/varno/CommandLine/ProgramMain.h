#ifndef VARNO_APPS_VARNO_COMMANDLINE_PROGRAMMAIN_H
#define VARNO_APPS_VARNO_COMMANDLINE_PROGRAMMAIN_H

#include "CommandLine/CommandTable.h"

#include <string>
#include <vector>

namespace varno {

/// What a program does with its arguments, those after its name. Returns the exit status, throws on failure.
using RunProgram = int (*)(const std::vector<std::string>& words);

/// The main function of a program: prepares standard streams and signals, runs, and prints what is thrown as
/// one line on standard error. Where a signal has ended the work, the process ends by that signal.
/// @param count, words as main() has them
/// @return the exit status
int programMain(int count, char** words, RunProgram run);

/// Reads the arguments of a command and runs it, or prints its help.
/// @param words those after the command's name
/// @return the exit status
/// @throws CommandError, HostError where it cannot
int runCommand(const CommandEntry& entry, const std::vector<std::string>& words);

} // namespace varno

#endif
