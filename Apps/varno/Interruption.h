#ifndef VARNO_APPS_VARNO_INTERRUPTION_H
#define VARNO_APPS_VARNO_INTERRUPTION_H

#include "CommandError.h"

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

/// The signal that asked the program to stop, 0 if none has. [any]
int interruptedBySignal();

/// To be called between blocks of any long work. [any]
/// @throws Interrupted once a signal has asked the program to stop
void throwIfInterrupted();

/// Forgets a signal. For work that a signal ends as it should, and for tests.
void clearInterruption();

} // namespace varno

#endif
