/// Where a bundle keeps its resources.
#ifndef VARNO_SOURCE_PLATFORM_BUNDLELAYOUT_H
#define VARNO_SOURCE_PLATFORM_BUNDLELAYOUT_H

#include <filesystem>
#include <optional>

namespace varno {

/// The folder of the resources that belong to a binary: `Contents/Resources` for one that lies in
/// `Contents/<system>/`, else `resources` beside it. Symbolic links are followed only where the path as given
/// leads to neither. Empty where neither is a folder.
/// @param binary absolute path; need not exist
std::optional<std::filesystem::path> resourcesOf(const std::filesystem::path& binary);

} // namespace varno

#endif
