/// What a CLAP host has for the menu of a parameter.
#ifndef VARNO_FORMATS_CLAP_WINDOW_HOSTMENU_H
#define VARNO_FORMATS_CLAP_WINDOW_HOSTMENU_H

#include "CLAP/HostCalls.h"
#include "Surround/SurroundMenus.h"

#include <vector>

namespace varno {

/// The host's items, in its order; none where it has none. A menu within the menu becomes a heading with its
/// items. @param host outlives the items [main]
std::vector<HostMenuItem> hostMenuOf(const HostCalls& host, clap_id parameter);

} // namespace varno

#endif
