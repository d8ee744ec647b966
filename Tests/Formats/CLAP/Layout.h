/// Sizes, places and constants of the interface as one set of headers has them.
#ifndef VARNO_TESTS_FORMATS_CLAP_LAYOUT_H
#define VARNO_TESTS_FORMATS_CLAP_LAYOUT_H

#include <map>
#include <string>

namespace varno::test {

/// Numbers and texts by what they are of.
using ClapLayout = std::map<std::string, std::string>;

ClapLayout ownLayout();
ClapLayout publishedLayout();

} // namespace varno::test

#endif
