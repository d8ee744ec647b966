/// How thorough a run of the tests is.
#ifndef VARNO_TESTS_SUPPORT_TESTSCALE_H
#define VARNO_TESTS_SUPPORT_TESTSCALE_H

#include <cstdlib>

namespace varno::test {

/// The environment's VARNO_TEST_SCALE, a whole number: tests over many random cases take that many times
/// their usual number. 1 where it is not set or not a positive number.
inline int testScale() {
    const char* text = std::getenv("VARNO_TEST_SCALE");
    const int scale = text != nullptr ? std::atoi(text) : 1;
    return scale > 0 ? scale : 1;
}

} // namespace varno::test

#endif
