/// The extension for marks beside parameters as a table of C functions.
#ifndef VARNO_FORMATS_CLAP_WINDOW_INDICATIONS_H
#define VARNO_FORMATS_CLAP_WINDOW_INDICATIONS_H

#include <string_view>

namespace varno {

/// The table, under both of the extension's names; null for any other. The plug-in keeps what it is given
/// while it has no window. [any]
const void* indicationExtension(std::string_view id) noexcept;

} // namespace varno

#endif
