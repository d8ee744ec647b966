#ifndef VARNO_APPS_VARNO_COMMANDLINE_INTERRUPTION_H
#define VARNO_APPS_VARNO_COMMANDLINE_INTERRUPTION_H

#include "CommandLine/CommandError.h"

#include <csignal>
#include <pthread.h>

namespace varno {

/// A signal has asked the program to stop.
class Interrupted : public WorkError {
public:
    Interrupted()
        : WorkError("interrupted") {}
};

/// Makes SIGINT, SIGTERM and SIGHUP set a flag instead of ending the program, so that unfinished outputs are
/// removed on the way out, and makes failed writes to a closed pipe (SIGPIPE) or beyond a size limit
/// (SIGXFSZ) report errors as every other failed write does. Called once, before any thread starts.
void catchInterruptions();

/// Undoes that for the signals that ask for an end: from now on they end the program at once. For a program
/// that is about to run another one in its place. @throws Interrupted where one came before
void letInterruptionsEnd();

/// The signal that asked the program to stop, 0 if none has. [any]
int interruptedBySignal();

/// To be called between blocks of any long work. [any]
/// @throws Interrupted once a signal has asked the program to stop
void throwIfInterrupted();

/// Forgets a signal. For work that a signal ends as it should, and for tests.
void clearInterruption();

/// While it exists, the calling thread receives no signals; threads that it starts meanwhile never receive
/// any. Signals go to the thread that waits for them, since they end its wait.
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
