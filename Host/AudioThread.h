/// Which threads are audio threads.
#ifndef VARNO_HOST_AUDIOTHREAD_H
#define VARNO_HOST_AUDIOTHREAD_H

namespace varno {

/// Makes the calling thread an audio thread for as long as this lives; scopes nest. [any]
class AudioThreadScope {
public:
    AudioThreadScope() noexcept;
    AudioThreadScope(const AudioThreadScope&) = delete;
    AudioThreadScope& operator=(const AudioThreadScope&) = delete;
    ~AudioThreadScope();

private:
    bool mWasAudioThread;
};

/// Whether the calling thread is an audio thread now. [any]
bool isAudioThread() noexcept;

} // namespace varno

#endif
