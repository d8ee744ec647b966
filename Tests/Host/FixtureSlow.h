/// The fixture module as an effect that takes its time.
#ifndef VARNO_TESTS_HOST_FIXTURESLOW_H
#define VARNO_TESTS_HOST_FIXTURESLOW_H

namespace varno::fixture {

/// What the environment variable VARNO_FIXTURE_SLOW asks for: "compute" and "wait" have each 32nd buffer take
/// 20 ms, of the processor or asleep; "steady" gives each buffer the same work of about 0.1 ms, without any
/// memory or call of the system. Otherwise it does nothing.
void slowDown();

} // namespace varno::fixture

#endif
