/// Calls of a data model in any order, beside its host.
#ifndef VARNO_APPS_VARNO_VALIDATE_MODULE_RAWMODEL_H
#define VARNO_APPS_VARNO_VALIDATE_MODULE_RAWMODEL_H

#include "AAX_IACFEffectParameters.h"
#include "ACF/ACFPtr.h"
#include "Host/ModuleDescription.h"
#include "Host/StoredChunk.h"

#include <span>
#include <string>

namespace varno::validate {

/// A data model as its creation procedure makes it. @throws HostError where it makes none
ACFPtr<AAX_IACFEffectParameters> makeModel(const EffectDescription& effect);

/// What the calls are made with.
struct RawModel {
    AAX_IACFEffectParameters& model;
    IACFUnknown& host;
    const StoredChunk& chunk;
    const std::string& parameter; ///< The identifier of one.
};

struct RawCall {
    const char* name;
    /// Results are those of illegal calls at times: that each returns is what counts.
    void (*call)(const RawModel& raw);
};

/// Initialize, Uninitialize, and eight of what a model does between them. Those two come first.
std::span<const RawCall> rawCalls();
/// Without those two.
std::span<const RawCall> rawCallsOfALife();

} // namespace varno::validate

#endif
