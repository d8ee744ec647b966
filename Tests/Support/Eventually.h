/// Waits for what another process or thread does.
#ifndef VARNO_TESTS_SUPPORT_EVENTUALLY_H
#define VARNO_TESTS_SUPPORT_EVENTUALLY_H

#include <chrono>
#include <thread>

namespace varno::test {

/// How long a test waits for something that a loaded machine may delay, not how long it is expected to take.
inline constexpr std::chrono::seconds kGenerousDeadline{30};

/// Asks again and again until the condition holds; false where it still does not at the deadline.
template<typename Condition>
bool eventually(Condition condition, std::chrono::milliseconds deadline = kGenerousDeadline) {
    constexpr std::chrono::milliseconds kPause{1};
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        std::this_thread::sleep_for(kPause);
    }
    return true;
}

} // namespace varno::test

#endif
