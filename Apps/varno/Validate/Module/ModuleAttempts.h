/// What hosts may try with a module's instance.
#ifndef VARNO_APPS_VARNO_VALIDATE_MODULE_MODULEATTEMPTS_H
#define VARNO_APPS_VARNO_VALIDATE_MODULE_MODULEATTEMPTS_H

#include "Host/Instance.h"
#include "Validate/Plugin.h"

#include <vector>

namespace varno::validate {

// Each for as long as the instance lives.

/// Calls with parameters, indices, chunks and other identifiers that there are not.
std::vector<Attempt> unknownIdentifiers(Instance& instance);
/// Chunks of other kinds, contents and sizes.
std::vector<Attempt> foreignChunks(Instance& instance);
/// Data models of their own, with a host that calls them within each of its functions.
std::vector<Attempt> callsFromWithin(Instance& instance);

} // namespace varno::validate

#endif
