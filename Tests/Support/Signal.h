/// Test signals and comparison of signals, by the name that tests have for them.
#ifndef VARNO_TESTS_SUPPORT_SIGNAL_H
#define VARNO_TESTS_SUPPORT_SIGNAL_H

#include "Signals/Signal.h"

namespace varno::test {
using namespace varno::signals; // NOLINT(google-build-using-namespace): all of it
// Tests have functions of this name too, which would hide these.
using signals::firstDifference;
} // namespace varno::test

#endif
