/// Base of tests with the fixture module.
#ifndef VARNO_TESTS_HOST_FIXTURETEST_H
#define VARNO_TESTS_HOST_FIXTURETEST_H

#include "Tests/Host/FixtureModule.h"
#include "Tests/Support/HostFixture.h"
#include "Tests/Support/TemporaryFolder.h"

namespace varno {

/// The fixture module, linked in, with a page-table resource.
class FixtureTest : public HostFixture {
protected:
    FixtureTest()
        : HostFixture(fixture::entryPoints()) {}

    /// An instance of the fixture's effect.
    std::unique_ptr<Instance> makeInstance(const InstanceSetup& setup = {}) {
        return std::make_unique<Instance>(module(), setup);
    }
};

using test::TemporaryFolder;

/// The text of the HostError that an action throws; empty when it throws none.
template<class Action>
std::string hostErrorOf(Action action) {
    try {
        action();
    } catch (const HostError& error) {
        return error.what();
    }
    return {};
}

} // namespace varno

#endif
