#include "Host/MainGate.h"

#include "Host/AudioThread.h"

#include <string>

namespace varno {

MainGate::Scope::Scope(MainGate& gate, const char* operation)
    : mGate(gate) {
    gate.checkThread(operation);
    gate.mMutex.lock();
    mOuterOwner = gate.mOwner.exchange(std::this_thread::get_id());
}

MainGate::Scope::~Scope() {
    mGate.mOwner.store(mOuterOwner);
    mGate.mMutex.unlock();
}

MainGate::BufferValuesScope::BufferValuesScope(MainGate& gate) noexcept
    : mGate(gate),
      mIsHeld(gate.mMutex.try_lock()) {
    if (mIsHeld) {
        mOuterOwner = gate.mOwner.exchange(std::this_thread::get_id());
        mOuterIsForBuffer = gate.mIsForBuffer.exchange(true);
    }
}

MainGate::BufferValuesScope::~BufferValuesScope() {
    if (mIsHeld) {
        mGate.mIsForBuffer.store(mOuterIsForBuffer);
        mGate.mOwner.store(mOuterOwner);
        mGate.mMutex.unlock();
    }
}

void MainGate::check(const char* operation) const {
    const std::thread::id owner = mOwner.load();
    if (owner != std::this_thread::get_id() || !mIsForBuffer.load()) {
        checkThread(operation);
    }
    if (owner != std::thread::id() && owner != std::this_thread::get_id()) {
        mMonitor->report(Contract::Thread,
                         std::string(operation) + " while another thread is in a [main] call");
    }
    if (mIsClosed.load(std::memory_order_acquire)) {
        mMonitor->report(Contract::Lifecycle, std::string(operation) + " after the end of the instance");
    }
}

void MainGate::checkThread(const char* operation) const {
    if (isAudioThread()) {
        mMonitor->report(Contract::Thread, std::string(operation) + " on the audio thread");
    }
}

} // namespace varno
