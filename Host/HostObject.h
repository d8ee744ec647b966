/// Base of all objects that this host gives to a module, and what they share.
#ifndef VARNO_HOST_HOSTOBJECT_H
#define VARNO_HOST_HOSTOBJECT_H

#include "AAX_Errors.h"
#include "AAX_IString.h"
#include "ACF/IACFUnknown.h"
#include "Host/ContractMonitor.h"
#include "Host/HostOptions.h"

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

namespace varno {

/// The host's own live-object count, by kind of object, apart from the module's. Safe from any thread; takes
/// a lock. [any]
class HostLedger {
public:
    /// Adds an object. `kind` is a literal: the pointer is kept.
    void add(const char* kind);
    /// Removes an object.
    void remove(const char* kind);
    /// All live objects.
    std::int32_t total() const;
    /// The live objects as text, such as "2 property map, 1 controller"; empty when there is none.
    std::string text() const;

private:
    mutable std::mutex mMutex;
    std::map<std::string_view, std::int32_t> mLive;
};

/// Shared by the module and all host objects made for it, so that an object which the module never releases
/// stays valid.
struct HostContext {
    HostOptions options;
    std::shared_ptr<ContractMonitor> monitor;
    HostLedger ledger;
    std::filesystem::path resources; ///< The module's resource folder; empty when it has none.
};

/// Writes an output of an interface operation. Returns AAX_SUCCESS, or AAX_ERROR_NULL_ARGUMENT when it is
/// null. [any]
template<class T, class Value>
AAX_Result writeOutput(T* output, Value value) {
    if (output == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *output = value;
    return AAX_SUCCESS;
}

/// Writes two outputs, or none when either is null. [any]
template<class First, class FirstValue, class Second, class SecondValue>
AAX_Result writeOutput(First* first, FirstValue firstValue, Second* second, SecondValue secondValue) {
    return first == nullptr
               ? AAX_ERROR_NULL_ARGUMENT
               : (writeOutput(second, secondValue) == AAX_SUCCESS ? writeOutput(first, firstValue)
                                                                  : AAX_ERROR_NULL_ARGUMENT);
}

/// Text of any length. [any]
class HostString : public AAX_IString {
public:
    HostString() = default;
    explicit HostString(std::string text)
        : mText(std::move(text)) {}
    HostString(const HostString&) = default;

    std::uint32_t Length() const override { return static_cast<std::uint32_t>(mText.size()); }
    std::uint32_t MaxLength() const override { return kMaxLength; }
    const char* Get() const override { return mText.c_str(); }
    void Set(const char* text) override { mText = text; }
    AAX_IString& operator=(const AAX_IString& other) override {
        mText = other.Get();
        return *this;
    }
    AAX_IString& operator=(const char* text) override {
        mText = text;
        return *this;
    }
    HostString& operator=(const HostString&) = default;

    /// The text as the host keeps it.
    const std::string& text() const { return mText; }

private:
    static constexpr std::uint32_t kMaxLength = 0xFFFFFFFE;

    std::string mText;
};

/// Implements the root interface for a class that offers Primary and the interfaces of `interfaceFor`. An
/// object starts with one reference, its maker's, and is counted in the ledger under `kind` while it lives.
/// QueryInterface finds no interface that the options withhold.
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

    /// Releases `count` references at once. Returns the new count; at 0 the object is destroyed. [any]
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
    /// Finds an interface of another object that this one represents. Like QueryInterface; *outObject is null
    /// before.
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

/// The host's own class behind an object that the module passes back, borrowed; null for null and for an
/// object of another host. T::kOwnID is the identifier by which QueryInterface finds the T itself.
template<class T>
T* ownObject(IACFUnknown* object) {
    void* own = nullptr;
    if (object == nullptr || object->QueryInterface(T::kOwnID, &own) != ACF_OK) {
        return nullptr;
    }
    object->Release();
    return static_cast<T*>(own);
}

/// Holds so many references that a module which releases one too often does not destroy the object while the
/// host uses it. At the end it reports references that the module has kept or released twice; a kept object
/// is not destroyed.
template<class T>
class HostReference {
public:
    HostReference() = default;
    /// Takes over the one reference of a new object. `name` is a literal for messages.
    HostReference(T* object, const char* name)
        : mObject(object),
          mName(name) {
        for (std::uint32_t i = 1; i < kReserve; ++i) {
            mObject->AddRef();
        }
    }
    HostReference(const HostReference&) = delete;
    HostReference& operator=(const HostReference&) = delete;
    ~HostReference() { reset(); }

    /// Releases the object, if any, after the check.
    void reset() {
        if (mObject == nullptr) {
            return;
        }
        const std::uint32_t references = mObject->references();
        if (references != kReserve) {
            const std::string difference =
                references > kReserve ? std::to_string(references - kReserve) + " too many held"
                                      : std::to_string(kReserve - references) + " given back too often";
            mObject->context()->monitor->report(Contract::kReferences, std::string("references to the ") +
                                                                           mName + ": " + difference);
        }
        T* object = mObject;
        mObject = nullptr;
        object->giveBack(references < kReserve ? references : kReserve);
    }

    T* get() const { return mObject; }
    T* operator->() const { return mObject; }
    T& operator*() const { return *mObject; }

private:
    static constexpr std::uint32_t kReserve = 1024;

    T* mObject = nullptr;
    const char* mName = "";
};

} // namespace varno

#endif
