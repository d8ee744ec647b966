#include "AAX_CMutex.h"

#include <pthread.h>

#include <atomic>
#include <thread>

// A free lock is taken and released by one exchange of the owner, without a call of the system: the audio
// thread of a host whose values come with the buffers does that. Only a thread that finds it taken blocks, on
// the condition, and only then has the owner anybody to wake.
//
// No wake-up is lost: the waiting thread counts itself before its last look at the owner, and the owner
// leaves before it looks at the count, all in one order (memory_order_seq_cst); and the mutex, which the
// waiting thread holds from that look until it sleeps, keeps the signal from coming between the two.
struct AAX_CMutex::Record {
    // Read without the mutex by threads that may or may not be the owner. Only the owner ever writes its own
    // identifier here, so whoever reads that of its own thread is the owner.
    std::atomic<std::thread::id> owner{};
    pthread_mutex_t mutex{};
    pthread_cond_t released{};
    std::atomic<int> waiting{0};

    bool take(std::thread::id caller) {
        std::thread::id nobody;
        return owner.compare_exchange_strong(nobody, caller);
    }

    void waitAndTake(std::thread::id caller) {
        pthread_mutex_lock(&mutex);
        ++waiting;
        while (!take(caller)) {
            pthread_cond_wait(&released, &mutex);
        }
        --waiting;
        pthread_mutex_unlock(&mutex);
    }

    void wakeOne() {
        pthread_mutex_lock(&mutex);
        pthread_cond_signal(&released);
        pthread_mutex_unlock(&mutex);
    }
};

AAX_CMutex::AAX_CMutex()
    : mRecord(std::make_unique<Record>()) {
    if (pthread_mutex_init(&mRecord->mutex, nullptr) != 0) {
        mRecord.reset();
        return;
    }
    if (pthread_cond_init(&mRecord->released, nullptr) != 0) {
        pthread_mutex_destroy(&mRecord->mutex);
        mRecord.reset();
    }
}

AAX_CMutex::~AAX_CMutex() {
    if (mRecord) {
        pthread_cond_destroy(&mRecord->released);
        pthread_mutex_destroy(&mRecord->mutex);
    }
}

bool AAX_CMutex::Lock() {
    const std::thread::id caller = std::this_thread::get_id();
    if (!mRecord || mRecord->owner.load(std::memory_order_relaxed) == caller) {
        return false;
    }
    if (!mRecord->take(caller)) {
        mRecord->waitAndTake(caller);
    }
    return true;
}

void AAX_CMutex::Unlock() {
    if (!mRecord || mRecord->owner.load(std::memory_order_relaxed) != std::this_thread::get_id()) {
        return;
    }
    mRecord->owner.store({});
    if (mRecord->waiting.load() > 0) {
        mRecord->wakeOne();
    }
}
