/// The extensions of a plug-in's window as tables of C functions.
#ifndef VARNO_FORMATS_CLAP_WINDOW_WINDOWEXTENSIONS_H
#define VARNO_FORMATS_CLAP_WINDOW_WINDOWEXTENSIONS_H

#include <string_view>

namespace varno {

/// The table of an extension; null where windows have none of that name. [any]
const void* windowExtension(std::string_view id) noexcept;

} // namespace varno

#endif
