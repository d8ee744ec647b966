/// What is wrong with an LV2 bundle beyond what the validator of its vocabulary sees.
#ifndef VARNO_TESTS_FORMATS_LV2_BUNDLELINT_H
#define VARNO_TESTS_FORMATS_LV2_BUNDLELINT_H

#include <filesystem>
#include <string>
#include <vector>

namespace varno::test {

/// The faults of all plug-ins of the bundle, one line each: what a host would be misled by, refuse or warn
/// of.
std::vector<std::string> faultsOfBundle(const std::filesystem::path& bundle);

/// The faults of a binary that exports anything but `symbol`, brings processes into being, needs writing to
/// its code, or needs a C++ library, which a host may have another one of.
std::vector<std::string> faultsOfBinary(const std::filesystem::path& binary, const std::string& symbol);

} // namespace varno::test

#endif
