#include "Host/AudioThread.h"

namespace varno {

namespace {

// Statically initialised, so that the first access on a thread costs nothing more than any other.
thread_local bool tIsAudioThread = false;

} // namespace

AudioThreadScope::AudioThreadScope() noexcept
    : mWasAudioThread(tIsAudioThread) {
    tIsAudioThread = true;
}

AudioThreadScope::~AudioThreadScope() {
    tIsAudioThread = mWasAudioThread;
}

bool isAudioThread() noexcept {
    return tIsAudioThread;
}

} // namespace varno
