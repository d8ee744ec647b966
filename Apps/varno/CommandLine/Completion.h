/// Scripts that complete the program's command line in a shell.
#ifndef VARNO_APPS_VARNO_COMMANDLINE_COMPLETION_H
#define VARNO_APPS_VARNO_COMMANDLINE_COMPLETION_H

#include "CommandLine/CommandTable.h"

#include <string>
#include <string_view>

namespace varno {

// Each completes commands, options, values, files and parameters. It needs nothing but the shell itself; it
// runs the program for the names of parameters and presets.

std::string bashCompletion(const ProgramEntry& program);
std::string zshCompletion(const ProgramEntry& program);
std::string fishCompletion(const ProgramEntry& program);

/// The text up to the end of its first sentence; without a final full stop, as shells show descriptions.
std::string_view firstSentence(std::string_view text);

} // namespace varno

#endif
