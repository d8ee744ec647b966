#ifndef VARNO_APPS_VARNO_VALIDATE_CHECKPROCESS_H
#define VARNO_APPS_VARNO_VALIDATE_CHECKPROCESS_H

#include "Validate/Check.h"

#include <string>
#include <vector>

namespace varno::validate {

enum class Verdict {
    kPass,
    kNote, ///< Passed, with something to know.
    kFail,
    kSkip, ///< Not made.
};

/// "PASS", "NOTE", "FAIL" or "SKIP".
std::string_view verdictWord(Verdict verdict);

/// What a check has found.
struct CheckResult {
    Verdict verdict = Verdict::kPass;
    std::vector<Finding> findings; ///< In the order in which they were stated.
    double seconds = 0.0;          ///< By the clock.
};

/// Runs a check in a child process of its own. A crash, an end of the process by the plug-in itself and a
/// check that takes too long are failures. What the plug-in prints goes nowhere, but for its last line, which
/// such a failure shows. Nothing of the child is left. To be called while this process has no other threads.
/// [main]
/// @throws Interrupted once a signal has asked this program to stop
/// @throws WorkError where the system makes no process
CheckResult runInChild(const Check& check, const CheckSetup& setup);

} // namespace varno::validate

#endif
