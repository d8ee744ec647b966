/// A host object for tests: offers what it is told to and counts its references.
#ifndef VARNO_TESTS_SUPPORT_FAKEUNKNOWN_H
#define VARNO_TESTS_SUPPORT_FAKEUNKNOWN_H

#include "ACF/IACFUnknown.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace varno {

/// Implements the component part of `Interface`, which derives from IACFUnknown. It lives as long as the test
/// wants: the references that others hold are counted, and nothing happens when none is left.
template<class Interface>
class FakeUnknown : public Interface {
public:
    virtual ~FakeUnknown() = default;

    ACFRESULT QueryInterface(const acfIID& iid, void** outObject) override {
        *outObject = nullptr;
        for (const auto& [offered, object] : mOffers) {
            if (offered == iid && object != nullptr) {
                object->AddRef();
                *outObject = object;
                return ACF_OK;
            }
        }
        return ACF_E_NOINTERFACE;
    }
    std::uint32_t AddRef() override { return static_cast<std::uint32_t>(++mReferences); }
    std::uint32_t Release() override { return static_cast<std::uint32_t>(--mReferences); }

    /// Answers queries for `iid` with `object` (borrowed); null withholds the interface again.
    void offer(const acfIID& iid, IACFUnknown* object) {
        std::erase_if(mOffers, [&](const auto& entry) { return entry.first == iid; });
        mOffers.emplace_back(iid, object);
    }

    /// References that others hold now.
    std::int32_t references() const { return mReferences; }

private:
    std::vector<std::pair<acfIID, IACFUnknown*>> mOffers;
    std::int32_t mReferences = 0;
};

/// A host object that only leads to others.
using FakeHost = FakeUnknown<IACFUnknown>;

} // namespace varno

#endif
