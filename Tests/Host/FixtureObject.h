/// Counted base of the fixture module's objects.
#ifndef VARNO_TESTS_HOST_FIXTUREOBJECT_H
#define VARNO_TESTS_HOST_FIXTUREOBJECT_H

#include "ACF/IACFUnknown.h"

#include <atomic>

namespace varno::fixture {

/// The module's live objects.
inline std::atomic<int> gLiveObjects{0};

/// Answers queries for the root interface and for one other.
template<class Interface>
class FixtureObject : public Interface {
public:
    ACFRESULT QueryInterface(const acfIID& iid, void** outObject) override {
        *outObject = nullptr;
        if (!(iid == IID_IACFUnknown) && !(iid == mIID)) {
            return ACF_E_NOINTERFACE;
        }
        *outObject = this;
        AddRef();
        return ACF_OK;
    }
    std::uint32_t AddRef() override { return ++mReferences; }
    std::uint32_t Release() override {
        const std::uint32_t left = --mReferences;
        if (left == 0) {
            delete this;
        }
        return left;
    }

protected:
    explicit FixtureObject(const acfIID& iid)
        : mIID(iid) {
        ++gLiveObjects;
    }
    virtual ~FixtureObject() { --gLiveObjects; }

private:
    acfIID mIID;
    std::atomic<std::uint32_t> mReferences{0};
};

} // namespace varno::fixture

#endif
