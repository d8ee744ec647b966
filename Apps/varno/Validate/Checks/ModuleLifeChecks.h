/// Checks of a module's life that its interfaces alone make possible.
#ifndef VARNO_APPS_VARNO_VALIDATE_CHECKS_MODULELIFECHECKS_H
#define VARNO_APPS_VARNO_VALIDATE_CHECKS_MODULELIFECHECKS_H

#include "Validate/Check.h"

namespace varno::validate {

/// Every order of calls of a data model, those before its initialisation and after its end too.
void checkCallOrders(Context& context);
/// Hosts that lack an interface, or two.
void checkWithheldInterfaces(Context& context);
/// Hosts of which every call throws.
void checkThrowingHost(Context& context);
/// No memory in each of a data model's calls.
void checkFailingAllocations(Context& context);

} // namespace varno::validate

#endif
