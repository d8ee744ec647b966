#include "AAX_CMutex.h"
#include "AAX_StLock_Guard.h"

#include <gtest/gtest.h>

#include <pthread.h>

#include <cerrno>
#include <thread>

namespace {

bool gSystemHasNoMutexLeft = false;

} // namespace

// The linker's option --wrap makes these names: every call of the system's function comes here.
extern "C" int __real_pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes);
extern "C" int __wrap_pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes);
extern "C" int __wrap_pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes) {
    return gSystemHasNoMutexLeft ? EAGAIN : __real_pthread_mutex_init(mutex, attributes);
}

namespace varno {
namespace {

// Runs `work` on another thread and waits for its end.
template<class Work>
void onAnotherThread(Work work) {
    std::thread(work).join();
}

TEST(AAX_CMutexTest, SecondLockOfTheOwnerReturnsFalseAtOnce) {
    AAX_CMutex mutex;
    EXPECT_TRUE(mutex.Lock());
    EXPECT_FALSE(mutex.Lock());
    EXPECT_FALSE(mutex.Lock());
    // One unlock releases it, however many attempts there were.
    mutex.Unlock();
    onAnotherThread([&] {
        EXPECT_TRUE(mutex.Lock());
        mutex.Unlock();
    });
}

TEST(AAX_CMutexTest, UnlockOfAnotherThreadLeavesItLocked) {
    AAX_CMutex mutex;
    ASSERT_TRUE(mutex.Lock());
    onAnotherThread([&] { mutex.Unlock(); });
    EXPECT_FALSE(mutex.Lock()) << "the owner must still have it";
    mutex.Unlock();
    EXPECT_TRUE(mutex.Lock());
    mutex.Unlock();
}

TEST(AAX_CMutexTest, UnlockWithoutLockDoesNothing) {
    AAX_CMutex mutex;
    mutex.Unlock();
    EXPECT_TRUE(mutex.Lock());
    mutex.Unlock();
    mutex.Unlock();
    EXPECT_TRUE(mutex.Lock());
    mutex.Unlock();
}

TEST(AAX_CMutexTest, NeverLocksWhenTheSystemHasNoMutexLeft) {
    gSystemHasNoMutexLeft = true;
    AAX_CMutex mutex;
    gSystemHasNoMutexLeft = false;
    EXPECT_FALSE(mutex.Lock());
    mutex.Unlock();
    EXPECT_FALSE(mutex.Lock());
    onAnotherThread([&] { EXPECT_FALSE(mutex.Lock()); });
}

TEST(AAX_StLock_GuardTest, HoldsTheLockForItsScope) {
    AAX_CMutex mutex;
    {
        const AAX_StLock_Guard guard(mutex);
        EXPECT_FALSE(mutex.Lock());
    }
    EXPECT_TRUE(mutex.Lock());
    mutex.Unlock();
}

TEST(AAX_StLock_GuardTest, InnerGuardLeavesTheLockToTheOuterOne) {
    AAX_CMutex mutex;
    {
        const AAX_StLock_Guard outer(mutex);
        { const AAX_StLock_Guard inner(mutex); }
        EXPECT_FALSE(mutex.Lock()) << "the inner guard has unlocked";
    }
    EXPECT_TRUE(mutex.Lock());
    mutex.Unlock();
}

} // namespace
} // namespace varno
