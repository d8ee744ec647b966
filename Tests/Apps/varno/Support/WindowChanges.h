/// Where two pictures of the window around the editor differ, by the names of its parts.
#ifndef VARNO_TESTS_APPS_VARNO_SUPPORT_WINDOWCHANGES_H
#define VARNO_TESTS_APPS_VARNO_SUPPORT_WINDOWCHANGES_H

#include "Tests/Support/Picture.h"

#include <set>
#include <string>

namespace varno::test {

/// The parts that differ in any pixel: controls by their parameters, buttons and meters of the bar by the
/// names that people hear, and "bar at X, Y" or "face at X, Y" (squares of 10 pixels at scale 1, from the
/// upper left corner of bar or face) for what is no part. Numbers, messages, names of controls and the line
/// at the bottom left are left out: fonts draw them differently. Throws std::invalid_argument for pictures of
/// different sizes.
/// @param scale of the window, with the bar and without the curve
std::set<std::string> changedParts(const Picture& before, const Picture& after, double scale = 1.0);

} // namespace varno::test

#endif
