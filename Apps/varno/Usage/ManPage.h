#pragma once

#include <string>

namespace varno {

/// The manual page varno(1), in roff with the macros of man(7).
/// @param version of the program
std::string manPage(const std::string& version);

} // namespace varno
