#ifndef VARNO_APPS_VARNO_SETTINGS_FILEROLES_H
#define VARNO_APPS_VARNO_SETTINGS_FILEROLES_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>

namespace varno {

/// The files that a command reads and writes. They are compared by device and inode, and those that do not
/// exist yet by their folder and name, so that no output replaces an input or another output under another
/// name. Pipes and devices may stand in several places. [main]
class FileRoles {
public:
    /// To be called for all inputs before the first output. @param path "-" is standard input
    void addInput(const std::string& path);

    /// @param path "-" is standard output, which takes one output at most
    /// @throws UsageError where the file is an input or another output
    void addOutput(const std::string& path);

private:
    /// Device and inode of a file, or those of its folder and its name.
    using Place = std::tuple<std::uint64_t, std::uint64_t, std::string>;

    static std::optional<Place> placeOf(const std::string& path, int standardStream);

    std::map<Place, std::string> mInputs; ///< Paths as given.
    std::map<Place, std::string> mOutputs;
};

} // namespace varno

#endif
