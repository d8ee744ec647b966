#include "AAX_CMutex.h"

#include <pthread.h>

#include <atomic>
#include <thread>

struct AAX_CMutex::Record {
    // Read without the lock by threads that may or may not have it, hence atomic. Only the owner ever writes
    // its own identifier here, so whoever reads that of its own thread is the owner, and no order with other
    // memory is needed.
    std::atomic<std::thread::id> owner{};
    pthread_mutex_t mutex{};
};

AAX_CMutex::AAX_CMutex()
    : mRecord(std::make_unique<Record>()) {
    if (pthread_mutex_init(&mRecord->mutex, nullptr) != 0) {
        mRecord.reset();
    }
}

AAX_CMutex::~AAX_CMutex() {
    if (mRecord) {
        pthread_mutex_destroy(&mRecord->mutex);
    }
}

bool AAX_CMutex::Lock() {
    const std::thread::id caller = std::this_thread::get_id();
    if (!mRecord || mRecord->owner.load(std::memory_order_relaxed) == caller) {
        return false;
    }
    pthread_mutex_lock(&mRecord->mutex);
    mRecord->owner.store(caller, std::memory_order_relaxed);
    return true;
}

void AAX_CMutex::Unlock() {
    if (mRecord && mRecord->owner.load(std::memory_order_relaxed) == std::this_thread::get_id()) {
        mRecord->owner.store({}, std::memory_order_relaxed);
        pthread_mutex_unlock(&mRecord->mutex);
    }
}
