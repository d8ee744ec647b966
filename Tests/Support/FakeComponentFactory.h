/// The host's maker of components, for tests.
#ifndef VARNO_TESTS_SUPPORT_FAKECOMPONENTFACTORY_H
#define VARNO_TESTS_SUPPORT_FAKECOMPONENTFACTORY_H

#include "ACF/IACFComponentFactory.h"
#include "Tests/Support/FakeUnknown.h"

namespace varno {

/// Knows one component: hands out the objects that it offers instead of making new ones.
class FakeComponentFactory : public FakeUnknown<IACFComponentFactory> {
public:
    explicit FakeComponentFactory(const acfCLSID& classID)
        : mClassID(classID) {}

    ACFRESULT CreateComponent(IACFUnknown* outer, const acfCLSID& classID, const acfIID& iid,
                              void** outObject) override {
        *outObject = nullptr;
        asked.push_back(iid);
        if (outer != nullptr || !(classID == mClassID)) {
            return ACF_E_NOINTERFACE;
        }
        const ACFRESULT found = QueryInterface(iid, outObject);
        return found == ACF_OK ? resultWhenFound : found;
    }

    /// The interfaces asked for so far, in order.
    std::vector<acfIID> asked;
    /// What it answers beside an object; a failure makes it a factory that leaves its caller with half a
    /// component.
    ACFRESULT resultWhenFound = ACF_OK;

private:
    acfCLSID mClassID;
};

} // namespace varno

#endif
