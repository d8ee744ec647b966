#ifndef VARNO_APPS_VARNO_COMMANDLINE_HELP_H
#define VARNO_APPS_VARNO_COMMANDLINE_HELP_H

#include "CommandLine/CommandTable.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// What `varno --help` prints.
std::string programHelp(const ProgramEntry& program);

/// What `varno COMMAND --help` prints.
std::string commandHelp(const CommandEntry& command);

/// The forms of a command's use, "varno render [OPTIONS] INPUT OUTPUT" and so on.
std::vector<std::string> usageLines(const CommandEntry& command);

/// An option as the help shows it: "-j, --jobs N".
std::string optionTerm(const OptionEntry& option);

/// What help and manual page say about an option: its sentences and, of a number, which ones it takes.
std::string optionText(const OptionEntry& option);

/// The manual page varno(1), in roff with the macros of man(7).
/// @param version of the program: "1.2.3"
std::string manPage(const ProgramEntry& program, const std::string& version);

} // namespace varno

#endif
