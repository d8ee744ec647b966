#include "CommandLine/Interruption.h"

#include <atomic>
#include <csignal>

namespace varno {
namespace {

constexpr int kEndingSignals[] = {SIGINT, SIGTERM, SIGHUP};

std::atomic<int> interruptingSignal{0};
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler may only touch lock-free atomics");

void noteSignal(int signal) {
    interruptingSignal.store(signal, std::memory_order_relaxed);
}

bool isIgnored(int signal) {
    struct sigaction action {};
    sigaction(signal, nullptr, &action);
    return action.sa_handler == SIG_IGN;
}

// Without SA_RESTART, so that a read or write that waits for a pipe returns. A signal that was ignored from
// the start (as nohup does) stays so.
void noteWhenRaised(int signal) {
    if (isIgnored(signal)) {
        return;
    }
    struct sigaction action {};
    action.sa_handler = noteSignal;
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
}

} // namespace

void catchInterruptions() {
    for (const int signal : kEndingSignals) {
        noteWhenRaised(signal);
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

void letInterruptionsEnd() {
    for (const int signal : kEndingSignals) {
        if (!isIgnored(signal)) {
            std::signal(signal, SIG_DFL);
        }
    }
    throwIfInterrupted();
}

int interruptedBySignal() {
    return interruptingSignal.load(std::memory_order_relaxed);
}

void throwIfInterrupted() {
    if (interruptedBySignal() != 0) {
        throw Interrupted();
    }
}

void clearInterruption() {
    noteSignal(0);
}

} // namespace varno
