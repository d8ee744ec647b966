#ifndef VARNO_APPS_VARNO_EDIT_EDITCOMMAND_H
#define VARNO_APPS_VARNO_EDIT_EDITCOMMAND_H

#include "CommandLine/CommandTable.h"

namespace varno {

/// The command `varno edit`: its help, its options and what runs it.
CommandEntry editCommand();

} // namespace varno

#endif
