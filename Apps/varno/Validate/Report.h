#ifndef VARNO_APPS_VARNO_VALIDATE_REPORT_H
#define VARNO_APPS_VARNO_VALIDATE_REPORT_H

#include "Validate/CheckProcess.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace varno::validate {

/// A check that was run, and what came of it.
struct CheckedCheck {
    const Check* check = nullptr;
    CheckResult result;
};

/// What all checks together say of a plug-in.
enum class Judgement {
    kPassed,
    kFailed,
    kNotJudged, ///< Nothing failed, and too few of the checks that apply could be made.
};

/// "passed", "failed" or "not judged".
std::string judgementText(Judgement judgement);

/// How many there were of each verdict.
struct Counts {
    std::size_t passed = 0; ///< Those with notes too.
    std::size_t failed = 0;
    std::size_t skipped = 0;

    std::size_t all() const { return passed + failed + skipped; }
};

/// Of all checks that apply, this share must have been made.
inline constexpr int kLeastRunPercent = 60;

Counts countVerdicts(std::span<const CheckedCheck> checked);
Judgement judge(const Counts& counts);

/// The line of a check, and one more for each further finding; ended by a line feed.
std::string checkLines(const CheckedCheck& checked);

/// The last line: "25 checks: 24 passed, 1 skipped".
std::string countLine(const Counts& counts);

/// The run as JSON.
std::string reportJson(const CheckSetup& setup, std::span<const CheckedCheck> checked);

/// The table of checks and formats, for people and for scripts.
std::string checkListText();
std::string checkListJson();

} // namespace varno::validate

#endif
