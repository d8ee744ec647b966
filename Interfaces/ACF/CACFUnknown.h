/// Base of every object that the plug-in passes to the host.
#ifndef VARNO_INTERFACES_ACF_CACFUNKNOWN_H
#define VARNO_INTERFACES_ACF_CACFUNKNOWN_H

#include "ACF/IACFUnknown.h"

#include <atomic>
#include <cstdint>

/// Supplies a component's reference count, its interface lookup and its place in the module-wide count of
/// live objects. An object starts without a reference and is destroyed with the release of its last one, so
/// it is made with `new`. References may be added and released on any thread; nothing else in here is shared.
///
/// Interface lookup is split in two, so that a host can aggregate the object: whoever holds one of its
/// interfaces asks the controlling unknown, which is the host's outer object or, without one, the inner
/// unknown that answers for this object alone. A component derives from ACFDelegating, which writes that
/// split once.
class CACFUnknown {
public:
    /// `outer` is the controlling unknown of an aggregate, which must outlive this object: it is borrowed,
    /// since a reference would keep both alive for ever. Null: the object is not aggregated.
    explicit CACFUnknown(IACFUnknown* outer = nullptr);
    CACFUnknown(const CACFUnknown&) = delete;
    CACFUnknown& operator=(const CACFUnknown&) = delete;
    virtual ~CACFUnknown();

    /// For a derived class that has to prepare itself once it is complete; `host` is borrowed.
    /// The base does nothing. Returns ACF_OK. [main]
    virtual ACFRESULT InitializeInstance(IACFUnknown* host);
    /// Where the object releases what it holds: called once, when the last reference is gone, before the
    /// object is destroyed. The object may be referenced again for as long as this call lasts. The base does
    /// nothing. [any]
    virtual void FinalRelease();
    /// Destroys the object and frees its memory. [any]
    virtual void ReclaimMemory();
    /// Answers with one of the object's own interfaces; a derived class answers for its own and leaves the
    /// rest to its base, which answers for IID_IACFUnknown: the inner unknown. On success the caller owns one
    /// reference to *outObject, otherwise it is null. Returns ACF_OK or ACF_E_NOINTERFACE. [any]
    virtual ACFRESULT InternalQueryInterface(const acfIID& iid, void** outObject);
    /// Adds one reference to the object itself. Returns the new count. [any]
    virtual uint32_t InternalAddRef();
    /// Gives one reference to the object itself back. The release of the last one calls FinalRelease, then
    /// ReclaimMemory. Returns the new count. [any]
    virtual uint32_t InternalRelease();

    /// Number of objects of this module that are alive; the module may be unloaded at 0. [any]
    static int32_t GetActiveObjectCount();

protected:
    /// The unknown that answers for the whole: never null, borrowed, fixed for the object's life. [any]
    IACFUnknown* ControllingUnknown() const { return m_OuterUnknown; }

private:
    /// Answers for this object alone, whether it is aggregated or not.
    class PrivateUnknown final : public IACFUnknown {
    public:
        explicit PrivateUnknown(CACFUnknown* owner)
            : m_Owner(owner) {}
        /// The owner's InternalQueryInterface: the same ownership and result codes. [any]
        ACFRESULT QueryInterface(const acfIID& iid, void** outObject) override;
        /// The owner's InternalAddRef. Returns the new count. [any]
        uint32_t AddRef() override;
        /// The owner's InternalRelease. Returns the new count. [any]
        uint32_t Release() override;

    private:
        CACFUnknown* m_Owner;
    };

    static std::atomic<int32_t> m_ActiveObjects;

    std::atomic<uint32_t> m_RefCount{0};
    IACFUnknown* m_OuterUnknown;
    PrivateUnknown m_PrivateUnknown;
};

#endif
