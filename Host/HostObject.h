/// Counted base of everything that this host hands to a module.
#ifndef VARNO_HOST_HOSTOBJECT_H
#define VARNO_HOST_HOSTOBJECT_H

#include "ACF/IACFUnknown.h"
#include "Host/HostContext.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <utility>

namespace varno {

/// Implements the root interface for a class that offers Primary and whatever `interfaceFor` tells. An object
/// starts with one reference, its maker's, and is entered in the ledger under `kind` while it lives.
/// Interfaces that the options withhold are not answered to.
template<class Primary>
class HostObject : public Primary {
public:
    HostObject(const HostObject&) = delete;
    HostObject& operator=(const HostObject&) = delete;

    ACFRESULT QueryInterface(const acfIID& iid, void** outObject) final {
        if (outObject == nullptr) {
            return ACF_E_NOINTERFACE;
        }
        *outObject = nullptr;
        if (iid == IID_IACFUnknown) {
            *outObject = static_cast<IACFUnknown*>(this);
        } else if (mContext->options.withholds(iid)) {
            return ACF_E_NOINTERFACE;
        } else {
            *outObject = interfaceFor(iid);
        }
        if (*outObject == nullptr) {
            return queryOther(iid, outObject);
        }
        AddRef();
        return ACF_OK;
    }

    std::uint32_t AddRef() final { return mReferences.fetch_add(1, std::memory_order_relaxed) + 1; }

    std::uint32_t Release() final { return giveBack(1); }

    /// Gives back `count` references at once. Returns the new count; at 0 the object is destroyed. [any]
    std::uint32_t giveBack(std::uint32_t count) {
        const std::uint32_t left = mReferences.fetch_sub(count, std::memory_order_acq_rel) - count;
        if (left == 0) {
            delete this;
        }
        return left;
    }

    /// The references held now. [any]
    std::uint32_t references() const { return mReferences.load(std::memory_order_acquire); }
    /// What this object shares with the others of its module. [any]
    const std::shared_ptr<HostContext>& context() const { return mContext; }

protected:
    /// `kind` is a literal.
    HostObject(std::shared_ptr<HostContext> context, const char* kind)
        : mContext(std::move(context)),
          mKind(kind) {
        mContext->ledger.add(mKind);
    }
    virtual ~HostObject() { mContext->ledger.remove(mKind); }

    /// The interface `iid` of this object, borrowed, as a pointer to the interface's class; null when it has
    /// none.
    virtual void* interfaceFor(const acfIID& iid) = 0;
    /// Asks another object that this one answers for. Like QueryInterface; *outObject is null before.
    virtual ACFRESULT queryOther(const acfIID&, void**) { return ACF_E_NOINTERFACE; }

private:
    std::shared_ptr<HostContext> mContext;
    const char* mKind;
    std::atomic<std::uint32_t> mReferences{1};
};

/// One of several interfaces of an object: a part of the object, which shares its root interface.
template<class Interface>
class Facet : public Interface {
public:
    /// `owner` is the object that this is a part of.
    explicit Facet(IACFUnknown& owner)
        : mOwner(owner) {}
    Facet(const Facet&) = delete;
    Facet& operator=(const Facet&) = delete;

    ACFRESULT QueryInterface(const acfIID& iid, void** outObject) final {
        return mOwner.QueryInterface(iid, outObject);
    }
    std::uint32_t AddRef() final { return mOwner.AddRef(); }
    std::uint32_t Release() final { return mOwner.Release(); }

protected:
    ~Facet() = default;

private:
    IACFUnknown& mOwner;
};

/// The host's own class behind an object that comes back from the module, borrowed; null for null and for an
/// object of somebody else's. T::kOwnID is the identifier under which a T answers with itself.
template<class T>
T* ownObject(IACFUnknown* object) {
    void* own = nullptr;
    if (object == nullptr || object->QueryInterface(T::kOwnID, &own) != ACF_OK) {
        return nullptr;
    }
    object->Release();
    return static_cast<T*>(own);
}

} // namespace varno

#endif
