#ifndef VARNO_APPS_VARNO_VALIDATE_BINARIES_H
#define VARNO_APPS_VARNO_VALIDATE_BINARIES_H

#include "Validate/Plugin.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace varno::validate {

/// The binaries for this machine that a plug-in consists of, in the order of their names; of an LV2 bundle
/// those in its folder. Whether they can be read is not checked.
/// @throws PluginError where there is none
std::vector<std::filesystem::path> binariesOf(const std::filesystem::path& path, Format format);

/// Loads the libraries that the binaries of a plug-in need, for good: those of the system lose memory of
/// their own when they are unloaded and loaded again.
void keepLibrariesLoaded(const std::filesystem::path& path, Format format);

/// Whether a binary of a format may export this symbol.
bool mayExport(Format format, std::string_view symbol);

/// The symbols of which a binary of a format exports at least `leastEntries()`.
std::vector<std::string> entryPoints(Format format);
/// All of them for a module, one for the others.
std::size_t leastEntries(Format format);

} // namespace varno::validate

#endif
