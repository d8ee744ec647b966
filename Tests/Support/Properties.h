/// Properties that are checked with random cases, where there is the library for them: Debian's is built with
/// GNU's standard library and fits no other.
#ifndef VARNO_TESTS_SUPPORT_PROPERTIES_H
#define VARNO_TESTS_SUPPORT_PROPERTIES_H

#include <version>

#ifdef __GLIBCXX__
#define VARNO_HAS_PROPERTIES 1
#include <rapidcheck/gtest.h>
#else
#define VARNO_HAS_PROPERTIES 0
#endif

#endif
