/// Whether resident memory grows with each round of a test.
#ifndef VARNO_TESTS_SUPPORT_RESIDENTGROWTH_H
#define VARNO_TESTS_SUPPORT_RESIDENTGROWTH_H

#include "Tests/Support/Subprocess.h"

#include <algorithm>
#include <cstddef>

namespace varno::test {

/// What this process has more of in each half of a test's rounds. A leak grows in both halves. What is taken
/// once, such as the arena that malloc makes for a thread that finds the others locked on a busy machine,
/// grows in one.
class ResidentGrowth {
public:
    /// @param warmUp rounds until caches are full; fewer than `rounds`
    ResidentGrowth(int warmUp, int rounds)
        : mWarmUp(warmUp),
          mMiddle((warmUp + rounds) / 2) {}

    /// To be called at the end of each round. @param round from 0
    void after(int round) {
        if (round == mWarmUp) {
            mFirst = residentBytes();
        }
        if (round == mMiddle) {
            mSecond = residentBytes();
        }
    }

    /// Bytes from the end of the warm-up to now, as far as they come in both halves.
    std::ptrdiff_t bytes() const {
        const std::ptrdiff_t now = residentBytes();
        return 2 * std::min(mSecond - mFirst, now - mSecond);
    }

private:
    int mWarmUp;
    int mMiddle;
    std::ptrdiff_t mFirst = 0;
    std::ptrdiff_t mSecond = 0;
};

} // namespace varno::test

#endif
