/// Checks of the functions by which a module is started, described and ended.
#ifndef VARNO_APPS_VARNO_VALIDATE_CHECKS_MODULEREGISTRATIONCHECKS_H
#define VARNO_APPS_VARNO_VALIDATE_CHECKS_MODULEREGISTRATIONCHECKS_H

#include "Validate/Check.h"

namespace varno::validate {

/// No memory at each of their allocations.
void checkRegistrationWithoutMemory(Context& context);
/// A host that throws at each call of theirs.
void checkRegistrationWithThrowingHost(Context& context);

} // namespace varno::validate

#endif
