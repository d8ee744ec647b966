#ifndef VARNO_APPS_VARNO_RENDER_RENDERCOMMAND_H
#define VARNO_APPS_VARNO_RENDER_RENDERCOMMAND_H

#include "CommandLine/CommandTable.h"

namespace varno {

/// The command `varno render`: its help, its options and what runs it.
CommandEntry renderCommand();

} // namespace varno

#endif
