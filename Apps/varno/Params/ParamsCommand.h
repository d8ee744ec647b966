#ifndef VARNO_APPS_VARNO_PARAMS_PARAMSCOMMAND_H
#define VARNO_APPS_VARNO_PARAMS_PARAMSCOMMAND_H

#include "CommandLine/CommandTable.h"

namespace varno {

/// The command `varno params`: its help, its options and what runs it.
CommandEntry paramsCommand();

} // namespace varno

#endif
