/// What a module does for each of its entry points.
#ifndef VARNO_INTERFACES_AAX_INIT_H
#define VARNO_INTERFACES_AAX_INIT_H

#include "AAX.h"
#include "AAX_ICollection.h"
#include "ACF/IACFComponentDefinition.h"
#include "ACF/IACFPluginDefinition.h"

/// The version of the architecture that the module is built to, as the host compares it: the release in the
/// upper 32 bits, its build in the lower.
inline constexpr uint64_t kAAX_SDKVersion = 0x00000204013449EA;

/// Describes the effects of the module to `outCollection` (borrowed, not null). Defined by the effect, not by
/// the library layer. Returns AAX_SUCCESS or the failure that keeps the module from being used; may throw.
/// [main]
AAX_Result GetEffectDescriptions(AAX_ICollection* outCollection);

/// Has the module described to the host's collection `host` (borrowed). On success the caller owns one
/// reference to *outDefinition; when the host has none it is null. Returns AAX_SUCCESS; the code of the
/// failure, traced with one line; AAX_ERROR_NULL_OBJECT when the host has no definition;
/// AAX_ERROR_UNKNOWN_EXCEPTION. [main]
AAX_Result AAXRegisterPlugin(IACFUnknown* host, IACFPluginDefinition** outDefinition);
/// Registers no separate component: *outDefinition is null. Returns AAX_SUCCESS. [main]
AAX_Result AAXRegisterComponent(IACFUnknown* host, uint32_t index, IACFComponentDefinition** outDefinition);
/// The module has no class factory: *outFactory is null. Returns AAX_ERROR_UNIMPLEMENTED. [main]
AAX_Result AAXGetClassFactory(IACFUnknown* host, const acfCLSID& classID, const acfIID& iid,
                              void** outFactory);
/// Returns the number of the module's objects that are alive; at 0 it may be unloaded. [any]
AAX_Result AAXCanUnloadNow(IACFUnknown* host);
/// Opens the diagnostics channel to `host` (borrowed; its services are referenced until shut-down).
/// Returns AAX_SUCCESS. Throws what the host throws. [main]
AAX_Result AAXStartup(IACFUnknown* host);
/// Closes the diagnostics channel. Returns AAX_SUCCESS. Throws what the host throws while it is released.
/// [main]
AAX_Result AAXShutdown(IACFUnknown* host);
/// Writes kAAX_SDKVersion. Returns AAX_SUCCESS. [any]
AAX_Result AAXGetSDKVersion(uint64_t* outVersion);

#endif
