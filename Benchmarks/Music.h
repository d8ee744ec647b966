/// What measurements of the routine listen to, and with which settings.
#ifndef VARNO_BENCHMARKS_MUSIC_H
#define VARNO_BENCHMARKS_MUSIC_H

#include "Tests/Support/AlgFixture.h"
#include "Tests/Support/Signal.h"

#include <cstddef>

namespace varno::bench {

/// Hz.
inline constexpr double kRate = 48000.0;

/// The first bar of the demo loop, 2 s of drums and bass with a peak of -3 dBFS, at kRate. `channels` is 1 or
/// 2.
const test::Signal& music(std::size_t channels);

/// The product's default settings with as much drive that the clipper has work to do.
test::AlgParameters musicSettings();

} // namespace varno::bench

#endif
