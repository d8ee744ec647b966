/// The commands of the program. Each is made in the folder of its name.
#ifndef VARNO_APPS_VARNO_COMMANDS_H
#define VARNO_APPS_VARNO_COMMANDS_H

#include "CommandLine/CommandTable.h"

namespace varno {

CommandEntry renderCommand();
CommandEntry editCommand();
CommandEntry playCommand();
CommandEntry describeCommand();
CommandEntry paramsCommand();
CommandEntry presetsCommand();

} // namespace varno

#endif
