/// The module's lock.
#ifndef VARNO_INTERFACES_AAX_CMUTEX_H
#define VARNO_INTERFACES_AAX_CMUTEX_H

#include <memory>

/// A lock that records its owner. It does not nest: a second Lock by the owner returns false at once, so that
/// code which calls itself while it holds the lock neither blocks nor unlocks too early (see
/// AAX_StLock_Guard). Taking and releasing a lock that nobody else wants calls nothing of the system. Where
/// the system has no mutex left the object is made all the same and never locks.
class AAX_CMutex {
public:
    AAX_CMutex();
    AAX_CMutex(const AAX_CMutex&) = delete;
    AAX_CMutex& operator=(const AAX_CMutex&) = delete;
    /// Must not be locked; no other thread may still be in a call.
    ~AAX_CMutex();

    /// Blocks until the lock is free and takes it. Returns whether this call took it: false when the calling
    /// thread has it already, or when there is no mutex. [any]
    bool Lock();
    /// Frees the lock when the calling thread holds it; otherwise does nothing. [any]
    void Unlock();

private:
    struct Record;
    std::unique_ptr<Record> mRecord;
};

#endif
