/// Where the plug-ins' binary lies.
#ifndef VARNO_FORMATS_CLAP_BINARYFOLDER_H
#define VARNO_FORMATS_CLAP_BINARYFOLDER_H

#include <filesystem>

namespace varno {

/// Keeps where the host has loaded the binary from. [any]
void setBinaryPath(const std::filesystem::path& path);

/// The folder "resources" beside the binary or, where that is a link, beside what it leads to: pictures and
/// presets. Empty where there is none. [any]
std::filesystem::path binaryResources();

} // namespace varno

#endif
