#ifndef VARNO_APPS_VARNO_COMMANDS_INPUTFILES_H
#define VARNO_APPS_VARNO_COMMANDS_INPUTFILES_H

#include "RenderOptions.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace varno {

/// The files that a command reads, so that it never writes to one of them under whatever name.
class InputFiles {
public:
    /// Files that do not exist are left out; reading them tells why.
    explicit InputFiles(const std::vector<RenderTask>& tasks);

    /// @throws AudioFileError where the file at `output` is one of the inputs, through links or not. Any
    /// thread.
    void refuseAsOutput(const std::string& output) const;

private:
    using Identity = std::pair<std::uint64_t, std::uint64_t>; // device and inode

    std::map<Identity, std::string> mNames;
};

} // namespace varno

#endif
