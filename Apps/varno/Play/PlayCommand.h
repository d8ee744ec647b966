#ifndef VARNO_APPS_VARNO_PLAY_PLAYCOMMAND_H
#define VARNO_APPS_VARNO_PLAY_PLAYCOMMAND_H

#include "CommandLine/CommandTable.h"

namespace varno {

/// The command `varno play`: its help, its options and what runs it.
CommandEntry playCommand();

} // namespace varno

#endif
