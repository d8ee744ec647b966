/// What every front end's host offers to the effect.
#ifndef VARNO_SURROUND_SETTINGS_EFFECTHOST_H
#define VARNO_SURROUND_SETTINGS_EFFECTHOST_H

#include "Host/HostOptions.h"

namespace varno {

/// A host's options with what it must know of the effect: its sample rates, and what changes with them. [any]
HostOptions effectHostOptions();

} // namespace varno

#endif
