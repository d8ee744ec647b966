/// A fixed seed for properties that are checked with random cases.
#ifndef VARNO_TESTS_SUPPORT_PROPERTYSEED_H
#define VARNO_TESTS_SUPPORT_PROPERTYSEED_H

#include <cstdlib>

namespace varno {

/// RapidCheck reads its configuration from the environment when the first property is checked, and prints it:
/// without one the cases are always the same. RC_PARAMS="seed=..." gives others.
inline const bool kPropertySeedIsFixed = setenv("RC_PARAMS", "seed=20250317", 0) == 0;

} // namespace varno

#endif
