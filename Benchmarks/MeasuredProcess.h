/// What a program costs.
#ifndef VARNO_BENCHMARKS_MEASUREDPROCESS_H
#define VARNO_BENCHMARKS_MEASUREDPROCESS_H

#include <filesystem>
#include <string>
#include <vector>

namespace varno::bench {

struct ProcessCost {
    double processorS = 0.0;    ///< User and system time.
    double elapsedS = 0.0;      ///< From its start to its end.
    double residentMebis = 0.0; ///< The most memory it ever held, MiB.
};

/// Runs a program (an absolute path) with arguments in a folder to its end; its standard output is dropped.
/// @throws std::runtime_error where it cannot be run or does not succeed
ProcessCost runMeasured(const std::vector<std::string>& command, const std::filesystem::path& folder);

/// The most memory that this process has ever held, MiB. The system counts it as a new program's too, which
/// is started from here: one that holds less cannot be measured.
double ownResidentMebis();

} // namespace varno::bench

#endif
