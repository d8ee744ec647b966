#ifndef VARNO_APPS_VARNO_PRESETS_PRESETSCOMMAND_H
#define VARNO_APPS_VARNO_PRESETS_PRESETSCOMMAND_H

#include "CommandLine/CommandTable.h"

namespace varno {

/// The command `varno presets`: its help, its options and what runs it.
CommandEntry presetsCommand();

} // namespace varno

#endif
