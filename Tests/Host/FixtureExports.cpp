// The fixture module's exports, for its bundle. FIXTURE_INCOMPLETE leaves one out, FIXTURE_SLOW makes it
// slow.
#include "Tests/Host/FixtureModule.h"
#ifdef FIXTURE_SLOW
#include "Tests/Host/FixtureSlow.h"
#endif

#define FIXTURE_EXPORT extern "C" __attribute__((visibility("default")))

using varno::fixture::entryPoints;

FIXTURE_EXPORT ACFRESULT ACFRegisterPlugin(IACFUnknown* host, IACFPluginDefinition** out) {
    return entryPoints().registerPlugin(host, out);
}

FIXTURE_EXPORT ACFRESULT ACFRegisterComponent(IACFUnknown* host, std::uint32_t index,
                                              IACFComponentDefinition** out) {
    return entryPoints().registerComponent(host, index, out);
}

FIXTURE_EXPORT ACFRESULT ACFGetClassFactory(IACFUnknown* host, const acfUID& classID, const acfUID& iid,
                                            void** out) {
    return entryPoints().getClassFactory(host, classID, iid, out);
}

FIXTURE_EXPORT ACFRESULT ACFCanUnloadNow(IACFUnknown* host) {
    return entryPoints().canUnloadNow(host);
}

FIXTURE_EXPORT ACFRESULT ACFStartup(IACFUnknown* host) {
#ifdef FIXTURE_SLOW
    varno::fixture::slowDown();
#endif
    return entryPoints().startup(host);
}

#ifndef FIXTURE_INCOMPLETE
FIXTURE_EXPORT ACFRESULT ACFShutdown(IACFUnknown* host) {
    return entryPoints().shutdown(host);
}
#endif

FIXTURE_EXPORT ACFRESULT ACFGetSDKVersion(std::uint64_t* out) {
    return entryPoints().getSDKVersion(out);
}
