// Plug-ins without a window, for systems that they have none for: linked instead of the window, so that hosts
// find no extension for one.
#include "CLAP/Window/WindowExtensions.h"

namespace varno {

const void* windowExtension(std::string_view /*id*/) noexcept {
    return nullptr;
}

} // namespace varno
