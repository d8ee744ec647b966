#ifndef VARNO_APPS_VARNO_DESCRIBE_DESCRIBECOMMAND_H
#define VARNO_APPS_VARNO_DESCRIBE_DESCRIBECOMMAND_H

#include "CommandLine/CommandTable.h"

namespace varno {

/// The command `varno describe`: its help, its options and what runs it.
CommandEntry describeCommand();

} // namespace varno

#endif
