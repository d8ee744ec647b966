/// The fixture module as an effect that is too slow now and then.
#ifndef VARNO_TESTS_HOST_FIXTURESLOW_H
#define VARNO_TESTS_HOST_FIXTURESLOW_H

namespace varno::fixture {

/// Has each 32nd buffer take 20 ms: of the processor where the environment variable VARNO_FIXTURE_SLOW is
/// "compute", asleep where it is "wait". Otherwise it does nothing.
void slowDown();

} // namespace varno::fixture

#endif
