/// The module's bundle: the folder that holds its binary and its resources.
#ifndef VARNO_SOURCE_PLATFORM_BUNDLE_H
#define VARNO_SOURCE_PLATFORM_BUNDLE_H

#include <filesystem>
#include <optional>
#include <string>

namespace varno {

struct Bundle {
    /// The folder of the resources; absolute, and there. On macOS it may be empty.
    std::filesystem::path resources;

    /// The system's own reference to the bundle, for libraries that look resources up through it: a
    /// CFBundleRef on macOS, borrowed for as long as the module is loaded. Null on Linux, where the folder is
    /// all there is.
    void* reference = nullptr;
};

/// The bundle of the module that this code is in; where it is linked into a program, the bundle around that
/// program. Empty where there is none or, on Linux, where it has no resources.
/// @param identifier the bundle's reverse-domain name, by which macOS finds it; not used on Linux, where
/// the binary's path leads to it [main]
std::optional<Bundle> moduleBundle(const std::string& identifier);

/// Linux: the folder of the resources that belong to a binary: `Contents/Resources` for one that lies in
/// `Contents/<system>/`, else `resources` beside it. Symbolic links are followed only where the path as given
/// leads to neither. Empty where neither is a folder.
/// @param binary absolute path; need not exist
std::optional<std::filesystem::path> resourcesOf(const std::filesystem::path& binary);

} // namespace varno

#endif
