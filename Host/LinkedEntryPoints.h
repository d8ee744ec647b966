/// The entry points of a module that is linked into the program.
#ifndef VARNO_HOST_LINKEDENTRYPOINTS_H
#define VARNO_HOST_LINKEDENTRYPOINTS_H

#include "AAX_Exports.h"
#include "Host/ModuleEntryPoints.h"

namespace varno {

/// The table of the module that this program is linked with; a program that calls it must link one. [any]
inline ModuleEntryPoints linkedEntryPoints() {
    return {ACFRegisterPlugin, ACFRegisterComponent, ACFGetClassFactory, ACFCanUnloadNow,
            ACFStartup,        ACFShutdown,          ACFGetSDKVersion};
}

} // namespace varno

#endif
