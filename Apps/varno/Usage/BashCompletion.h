#ifndef VARNO_APPS_VARNO_USAGE_BASHCOMPLETION_H
#define VARNO_APPS_VARNO_USAGE_BASHCOMPLETION_H

#include <string>

namespace varno {

/// A script for bash that completes commands, options, values, files and parameters. It needs nothing but
/// bash itself; parameters are asked of the program.
std::string bashCompletion();

} // namespace varno

#endif
