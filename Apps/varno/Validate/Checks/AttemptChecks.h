/// Checks of what hosts may try with an instance, which each format has in its own form.
#ifndef VARNO_APPS_VARNO_VALIDATE_CHECKS_ATTEMPTCHECKS_H
#define VARNO_APPS_VARNO_VALIDATE_CHECKS_ATTEMPTCHECKS_H

#include "Validate/Check.h"

namespace varno::validate {

/// Calls with identifiers that there are not: an error or nothing.
void checkUnknownIdentifiers(Context& context);
/// States of other plug-ins: refused or ignored, and their memory given back.
void checkForeignStates(Context& context);
/// Hosts that call the plug-in within its calls of them.
void checkCallsFromWithin(Context& context);

} // namespace varno::validate

#endif
