/// Rendering in guarded memory, by the name that tests have for it.
#ifndef VARNO_TESTS_SUPPORT_RENDERCHECKER_H
#define VARNO_TESTS_SUPPORT_RENDERCHECKER_H

#include "Signals/RenderChecker.h"
#include "Tests/Support/Signal.h"

namespace varno::test {
using namespace varno::signals; // NOLINT(google-build-using-namespace): all of it
// Tests have functions of this name too, which would hide it.
using signals::textOf;
} // namespace varno::test

#endif
