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

/// What a script of a shell has for a value, by its kind.
struct ValueActions {
    std::string_view files;
    std::string_view folders;
    std::string_view parameters;
    std::string_view settings; ///< "Gain=" and so on.
    std::string_view presets;  ///< Their names, and files.
    std::string_view nothing;  ///< Where there is nothing to propose: numbers, free text.
};

/// The one for a value. @param choices what the script has for those of a ValueKind::kChoice
std::string actionOf(ValueKind kind, const std::string& choices, const ValueActions& actions);

/// The text up to the end of its first sentence; without a final full stop, as shells show descriptions.
std::string_view firstSentence(std::string_view text);

} // namespace varno

#endif
