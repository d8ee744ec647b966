/// The entry points of a module that is linked into the program.
#ifndef LINKEDENTRYPOINTS_H
#define LINKEDENTRYPOINTS_H

#include "AAX_Exports.h"
#include "ModuleEntryPoints.h"

namespace varno {

/// The table of the module that this program is linked with; a program that calls it must link one. [any]
inline ModuleEntryPoints linkedEntryPoints() {
    return {ACFRegisterPlugin, ACFRegisterComponent, ACFGetClassFactory, ACFCanUnloadNow,
            ACFStartup,        ACFShutdown,          ACFGetSDKVersion};
}

} // namespace varno

#endif
