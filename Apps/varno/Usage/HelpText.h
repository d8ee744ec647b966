#ifndef VARNO_APPS_VARNO_USAGE_HELPTEXT_H
#define VARNO_APPS_VARNO_USAGE_HELPTEXT_H

#include "CommandTable.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// What `varno --help` prints.
std::string programHelp();

/// What `varno COMMAND --help` prints.
std::string commandHelp(const CommandEntry& command);

/// The forms of a command's use, "varno render [OPTIONS] INPUT OUTPUT" and so on.
std::vector<std::string> usageLines(const CommandEntry& command);

/// An option as the help shows it: "-j, --jobs N".
std::string optionTerm(const OptionEntry& option);

/// The groups of a list of options, in the order in which they first appear.
std::vector<std::string_view> optionGroups(std::span<const OptionEntry> options);

} // namespace varno

#endif
