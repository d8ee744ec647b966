/// The entry points of a module that is linked into the program.
#ifndef LINKEDENTRYPOINTS_H
#define LINKEDENTRYPOINTS_H

#include "ModuleEntryPoints.h"

extern "C" {
ACFRESULT ACFRegisterPlugin(IACFUnknown* host, IACFPluginDefinition** out);
ACFRESULT ACFRegisterComponent(IACFUnknown* host, uint32_t index, IACFComponentDefinition** out);
ACFRESULT ACFGetClassFactory(IACFUnknown* host, const acfUID& classID, const acfUID& iid, void** out);
ACFRESULT ACFCanUnloadNow(IACFUnknown* host);
ACFRESULT ACFStartup(IACFUnknown* host);
ACFRESULT ACFShutdown(IACFUnknown* host);
ACFRESULT ACFGetSDKVersion(uint64_t* out);
}

namespace varno {

/// The table of the module that this program is linked with; a program that calls it must link one. [any]
inline ModuleEntryPoints linkedEntryPoints() {
    return {ACFRegisterPlugin, ACFRegisterComponent, ACFGetClassFactory, ACFCanUnloadNow,
            ACFStartup,        ACFShutdown,          ACFGetSDKVersion};
}

} // namespace varno

#endif
