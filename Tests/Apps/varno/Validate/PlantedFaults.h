/// Plug-ins with a fault, and the checks that must find it.
#ifndef VARNO_TESTS_APPS_VARNO_VALIDATE_PLANTEDFAULTS_H
#define VARNO_TESTS_APPS_VARNO_VALIDATE_PLANTEDFAULTS_H

#include "Validate/CheckProcess.h"

#include <ostream>
#include <set>
#include <span>
#include <string>

namespace varno::test {

/// One plug-in with one fault.
struct PlantedFault {
    const char* plugin;          ///< Its name in VARNO_FAULTY_PLUGINS.
    std::set<std::string> found; ///< Identifiers of all checks of `group` that fail on it.
    const char* group;           ///< The group of those checks.
};

inline void PrintTo(const PlantedFault& fault, std::ostream* out) {
    *out << fault.plugin;
}

/// The identifiers of the checks of a group that fail on a plug-in, at the quick level.
/// @param group empty for all
inline std::set<std::string> failedChecks(const std::string& plugin, const std::string& group,
                                          std::string& report) {
    using namespace validate;
    // A check of these small plug-ins takes a second at most; one of them never ends.
    constexpr int kTimeLimitS = 10;
    const std::filesystem::path path = std::filesystem::path(VARNO_FAULTY_PLUGINS) / plugin;
    const CheckSetup setup{
        .path = path, .format = formatOf(path).value(), .seed = 1, .timeLimitS = kTimeLimitS};
    std::set<std::string> failed;
    for (const Check& check : allChecks()) {
        if (applies(check, setup.format, setup.level) && (group.empty() || check.group() == group)) {
            const CheckResult result = runInChild(check, setup);
            if (result.verdict == Verdict::kFail) {
                failed.insert(std::string(check.id));
                for (const Finding& finding : result.findings) {
                    report += std::string(check.id) + ": seen " + finding.seen + ", expected " +
                              finding.expected + '\n';
                }
            }
        }
    }
    return failed;
}

} // namespace varno::test

#endif
