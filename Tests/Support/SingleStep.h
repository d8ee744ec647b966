/// Makes a call in the middle of another one, behind a machine instruction of choice.
///
/// Threads that race find a lost update by chance: on two processors, one is often over before the next one
/// starts. Here each point at which another thread could come in between is tried once: an operation that is
/// made of several accesses is found each time.
#ifndef VARNO_TESTS_SUPPORT_SINGLESTEP_H
#define VARNO_TESTS_SUPPORT_SINGLESTEP_H

#include <functional>

#if defined(__x86_64__) && defined(__linux__)
#define VARNO_HAS_SINGLE_STEP 1
#else
#define VARNO_HAS_SINGLE_STEP 0 ///< No way for a program to trap its own instructions.
#endif

namespace varno::test {

/// Calls `work`, and once `between`, when `work` has carried out that many instructions, 1 or more. Both must
/// be such as a signal handler may call: no memory, no lock, no thrown exception, no system call. One at a
/// time in a process; not for a program that the thread sanitizer watches, which would be stepped through as
/// well.
/// @return false where `work` was over before; `between` was not called then
bool callAtInstruction(int instruction, const std::function<void()>& work,
                       const std::function<void()>& between);

/// The same at each instruction in turn: `prepare` is called before, `check` behind each pair of calls.
/// @return how many instructions there were
int callAtEachInstruction(const std::function<void()>& work, const std::function<void()>& between,
                          const std::function<void()>& prepare, const std::function<void()>& check);

} // namespace varno::test

#endif
