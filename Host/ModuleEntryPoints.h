/// The seven C functions through which a host knows a module.
#ifndef VARNO_HOST_MODULEENTRYPOINTS_H
#define VARNO_HOST_MODULEENTRYPOINTS_H

#include "ACF/IACFComponentDefinition.h"
#include "ACF/IACFPluginDefinition.h"

#include <cstdint>

namespace varno {

/// Table of a module's exports. Every member must be set; the functions must stay callable as long as the
/// module is in use. `host` is borrowed for the call unless the module adds a reference.
struct ModuleEntryPoints {
    /// Describes the module to the collection that `host` answers to; *out is an owned reference. [main]
    ACFRESULT (*registerPlugin)(IACFUnknown* host, IACFPluginDefinition** out);
    /// Registers the separate component `index`, if there is one; *out is an owned reference or null. [main]
    ACFRESULT (*registerComponent)(IACFUnknown* host, std::uint32_t index, IACFComponentDefinition** out);
    /// Hands out a class factory; *out is an owned reference or null. [main]
    ACFRESULT (*getClassFactory)(IACFUnknown* host, const acfUID& classID, const acfUID& iid, void** out);
    /// The number of the module's live objects; 0 when it may be unloaded. [any]
    ACFRESULT (*canUnloadNow)(IACFUnknown* host);
    /// First call of all but getSDKVersion: gives the module the host's services. [main]
    ACFRESULT (*startup)(IACFUnknown* host);
    /// Last call of all: takes the host's services back. [main]
    ACFRESULT (*shutdown)(IACFUnknown* host);
    /// Tells the version of the interfaces that the module was built for. [any]
    ACFRESULT (*getSDKVersion)(std::uint64_t* out);
};

} // namespace varno

#endif
