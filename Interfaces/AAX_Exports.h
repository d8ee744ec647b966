/// The seven entry points through which a host reaches the module, and nothing else.
#ifndef VARNO_INTERFACES_AAX_EXPORTS_H
#define VARNO_INTERFACES_AAX_EXPORTS_H

#include "ACF/IACFComponentDefinition.h"
#include "ACF/IACFPluginDefinition.h"
#include "ACF/IACFUnknown.h"

#include <cstdint>

/// A symbol that is seen from outside the module; all others are hidden. On Windows the list that the module
/// is linked with has them alone.
#if defined(_WIN32)
#define AAX_EXPORT
#else
#define AAX_EXPORT [[gnu::visibility("default")]]
#endif

// The order of a module's life: start-up, registration, the life of its objects, the question whether it may
// be unloaded, shut-down. No exception leaves an entry point: one that would gives ACF_E_UNEXPECTED. `host`
// is borrowed.
extern "C" {

/// As AAXRegisterPlugin: on success the caller owns one reference to *outDefinition. Returns its code, or
/// ACF_E_UNEXPECTED. [main]
AAX_EXPORT ACFRESULT ACFRegisterPlugin(IACFUnknown* host, IACFPluginDefinition** outDefinition);
/// As AAXRegisterComponent: *outDefinition is null. Returns ACF_OK. [main]
AAX_EXPORT ACFRESULT ACFRegisterComponent(IACFUnknown* host, uint32_t index,
                                          IACFComponentDefinition** outDefinition);
/// As AAXGetClassFactory: *outFactory is null. Returns AAX_ERROR_UNIMPLEMENTED. [main]
AAX_EXPORT ACFRESULT ACFGetClassFactory(IACFUnknown* host, const acfUID& classID, const acfUID& iid,
                                        void** outFactory);
/// As AAXCanUnloadNow. Returns the number of live objects, or ACF_E_UNEXPECTED. [any]
AAX_EXPORT ACFRESULT ACFCanUnloadNow(IACFUnknown* host);
/// As AAXStartup. Returns ACF_OK, or ACF_E_UNEXPECTED. [main]
AAX_EXPORT ACFRESULT ACFStartup(IACFUnknown* host);
/// As AAXShutdown. Returns ACF_OK, or ACF_E_UNEXPECTED. [main]
AAX_EXPORT ACFRESULT ACFShutdown(IACFUnknown* host);
/// As AAXGetSDKVersion. Returns ACF_OK. [any]
AAX_EXPORT ACFRESULT ACFGetSDKVersion(uint64_t* outVersion);
}

#endif
