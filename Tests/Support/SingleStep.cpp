#include "Tests/Support/SingleStep.h"

#if VARNO_HAS_SINGLE_STEP
#include <csignal>
#include <ucontext.h>
#include <x86intrin.h>

namespace varno::test {
namespace {

// With this flag the processor traps after each instruction. The kernel clears it for the handler of the
// signal.
constexpr unsigned long long kTrapFlag = 0x100;

const std::function<void()>* interposed = nullptr;
int left = 0;

void atTrap(int, siginfo_t*, void* context) {
    if (--left == 0) {
        static_cast<ucontext_t*>(context)->uc_mcontext.gregs[REG_EFL] &= ~static_cast<greg_t>(kTrapFlag);
        (*interposed)();
    }
}

} // namespace

bool callAtInstruction(int instruction, const std::function<void()>& work,
                       const std::function<void()>& between) {
    interposed = &between;
    left = instruction;
    struct sigaction stepping {};
    struct sigaction before {};
    stepping.sa_sigaction = atTrap;
    stepping.sa_flags = SA_SIGINFO;
    sigaction(SIGTRAP, &stepping, &before);
    __writeeflags(__readeflags() | kTrapFlag);
    work();
    __writeeflags(__readeflags() & ~kTrapFlag);
    sigaction(SIGTRAP, &before, nullptr);
    return left <= 0;
}

int callAtEachInstruction(const std::function<void()>& work, const std::function<void()>& between,
                          const std::function<void()>& prepare, const std::function<void()>& check) {
    for (int instruction = 1;; ++instruction) {
        prepare();
        if (!callAtInstruction(instruction, work, between)) {
            return instruction - 1;
        }
        check();
    }
}

} // namespace varno::test
#endif
