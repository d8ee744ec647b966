/// The C functions of a plug-in, from which no exception escapes.
#ifndef VARNO_FORMATS_CLAP_PLUGINTABLE_H
#define VARNO_FORMATS_CLAP_PLUGINTABLE_H

#include "CLAP/Clap/Plugin.h"

#include <cstdint>

namespace varno {

/// A plug-in that its destroy() ends. @param descriptor, host outlive it [any]
/// @throws std::bad_alloc
const clap_plugin_t* makePlugin(const clap_plugin_descriptor_t& descriptor, const clap_host_t& host,
                                std::int32_t channels);

} // namespace varno

#endif
