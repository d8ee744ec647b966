/// What is wrong with an LV2 bundle beyond what the validator of its vocabulary sees.
#ifndef VARNO_TESTS_FORMATS_LV2_BUNDLELINT_H
#define VARNO_TESTS_FORMATS_LV2_BUNDLELINT_H

#include <filesystem>
#include <string>
#include <vector>

namespace varno::test {

/// The faults of all plug-ins of the bundle, one line each: what would mislead a host, or what a host would
/// refuse or warn about.
std::vector<std::string> faultsOfBundle(const std::filesystem::path& bundle);

/// The faults of a binary that exports anything but `symbol`, creates processes, needs write access to its
/// code, or needs a C++ library, of which a host may have loaded another version.
std::vector<std::string> faultsOfBinary(const std::filesystem::path& binary, const std::string& symbol);

} // namespace varno::test

#endif
