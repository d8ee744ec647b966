/// Holds a lock for a scope.
#ifndef VARNO_INTERFACES_AAX_STLOCK_GUARD_H
#define VARNO_INTERFACES_AAX_STLOCK_GUARD_H

#include "AAX_CMutex.h"

/// Takes the lock for as long as it lives, unless the calling thread has it already: then an outer guard
/// keeps it and this one does nothing.
class AAX_StLock_Guard {
public:
    /// `mutex` is borrowed and must outlive the guard.
    explicit AAX_StLock_Guard(AAX_CMutex& mutex)
        : mMutex(&mutex),
          mLocked(mutex.Lock()) {}
    AAX_StLock_Guard(const AAX_StLock_Guard&) = delete;
    AAX_StLock_Guard& operator=(const AAX_StLock_Guard&) = delete;
    ~AAX_StLock_Guard() {
        if (mLocked) {
            mMutex->Unlock();
        }
    }

private:
    AAX_CMutex* mMutex;
    bool mLocked;
};

#endif
