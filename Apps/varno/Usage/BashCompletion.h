#pragma once

#include <string>

namespace varno {

/// A script for bash that completes commands, options, values, files and parameters. It needs nothing but
/// bash itself; parameters are asked of the program.
std::string bashCompletion();

} // namespace varno
