/// The commands of the program. Each is made in the folder of its name.
#ifndef VARNO_APPS_VARNO_COMMANDS_H
#define VARNO_APPS_VARNO_COMMANDS_H

#include "CommandLine/CommandTable.h"

namespace varno {

CommandEntry renderCommand();
/// Those with a window, which varno-window runs. @param run what the command does in this program
CommandEntry editCommand(RunCommand run);
CommandEntry playCommand(RunCommand run);
CommandEntry describeCommand();
CommandEntry paramsCommand();
CommandEntry measureCommand();
CommandEntry plotCommand();
CommandEntry presetsCommand();
CommandEntry doctorCommand();
/// Which varno-validate runs. @param run what the command does in this program
CommandEntry validateCommand(RunCommand run);

} // namespace varno

#endif
