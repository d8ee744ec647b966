/// Rendering in guarded memory, by the name that tests have for it.
#ifndef VARNO_TESTS_SUPPORT_RENDERCHECKER_H
#define VARNO_TESTS_SUPPORT_RENDERCHECKER_H

#include "Signals/RenderChecker.h"

namespace varno::test {
using namespace varno::signals; // NOLINT(google-build-using-namespace): all of it
} // namespace varno::test

#endif
