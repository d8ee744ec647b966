/// Owning reference to a component. Borrowed references are plain pointers.
#ifndef VARNO_INTERFACES_ACF_ACFPTR_H
#define VARNO_INTERFACES_ACF_ACFPTR_H

#include "ACF/IACFUnknown.h"

#include <utility>

/// Owns one reference to a T, or nothing. Moving hands the reference over; copying is deleted, so that every
/// further reference is taken in sight (`Retain`). Not thread-safe itself; the counts are.
///
/// An object of a host may throw while it is released. Destruction and assignment keep that to themselves;
/// who has to report it calls Reset before. [any]
template<class T>
class ACFPtr {
public:
    ACFPtr() = default;
    ACFPtr(const ACFPtr&) = delete;
    ACFPtr& operator=(const ACFPtr&) = delete;
    ACFPtr(ACFPtr&& other) noexcept
        : mObject(other.Detach()) {}
    ACFPtr& operator=(ACFPtr&& other) noexcept {
        const ACFPtr former = Adopt(std::exchange(mObject, other.Detach()));
        return *this;
    }
    ~ACFPtr() {
        try {
            Reset();
        } catch (...) {
            return; // The reference is gone, and a destructor cannot report anything.
        }
    }

    /// Takes over a reference that the caller owns.
    static ACFPtr Adopt(T* object) {
        ACFPtr result;
        result.mObject = object;
        return result;
    }

    /// Adds a reference of its own to a borrowed object.
    static ACFPtr Retain(T* object) {
        if (object != nullptr) {
            object->AddRef();
        }
        return Adopt(object);
    }

    /// Asks `object` (borrowed, may be null) for the interface `iid`, which must be that of T. Empty when the
    /// object is null or does not have it.
    static ACFPtr Query(IACFUnknown* object, const acfIID& iid) {
        ACFPtr result;
        if (object != nullptr && object->QueryInterface(iid, result.Out()) != ACF_OK) {
            result.mObject = nullptr;
        }
        return result;
    }

    /// Lets go of the reference, if any; empty then, also when the object throws.
    void Reset() {
        if (T* object = Detach()) {
            object->Release();
        }
    }

    /// Gives the reference to the caller, who releases it.
    T* Detach() { return std::exchange(mObject, nullptr); }

    /// Address for an operation that hands out an owned reference; empties the pointer first.
    void** Out() {
        Reset();
        return reinterpret_cast<void**>(&mObject);
    }

    T* Get() const { return mObject; }
    T* operator->() const { return mObject; }
    T& operator*() const { return *mObject; }
    explicit operator bool() const { return mObject != nullptr; }

private:
    T* mObject = nullptr;
};

#endif
