#ifndef VARNO_APPS_VARNO_PLAYER_SIGNALSBLOCKED_H
#define VARNO_APPS_VARNO_PLAYER_SIGNALSBLOCKED_H

#include <csignal>
#include <pthread.h>

namespace varno {

/// While it lives, the calling thread takes no signals, nor do the threads that it starts meanwhile, ever:
/// signals are for the thread that waits for them, since they end its wait.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &mBefore);
    }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &mBefore, nullptr); }

private:
    sigset_t mBefore{};
};

} // namespace varno

#endif
