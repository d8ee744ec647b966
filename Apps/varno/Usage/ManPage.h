#ifndef VARNO_APPS_VARNO_USAGE_MANPAGE_H
#define VARNO_APPS_VARNO_USAGE_MANPAGE_H

#include <string>

namespace varno {

/// The manual page varno(1), in roff with the macros of man(7).
/// @param version of the program
std::string manPage(const std::string& version);

} // namespace varno

#endif
