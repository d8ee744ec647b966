/// What the parts of an instance's host object share.
#ifndef VARNO_HOST_INSTANCESTATE_H
#define VARNO_HOST_INSTANCESTATE_H

#include "Host/HostContext.h"
#include "Host/InstanceSetup.h"
#include "Host/MainGate.h"
#include "Host/MeterBank.h"
#include "Host/ModuleDescription.h"
#include "Host/PacketExchange.h"

#include <atomic>
#include <functional>
#include <memory>
#include <string>

namespace varno {

/// Lives in the host object, which a module may keep longer than it should; so everything here is owned or
/// copied.
struct InstanceState {
    InstanceState(std::shared_ptr<HostContext> sharedContext, const EffectDescription& itsEffect,
                  const VariantDescription& itsVariant, const InstanceSetup& itsSetup);

    std::shared_ptr<HostContext> context;
    const std::string effectID;
    const std::string pageTableFile; ///< Name of the resource; empty when the effect has none.
    const VariantDescription variant;
    const InstanceSetup setup;
    MainGate gate;
    PacketExchange packets;
    MeterBank meters;
    std::atomic<std::int64_t> positionFrames{0};
    std::int32_t latencyFrames = 0; ///< [main]
    /// Hands a notification to the instance's objects; empty while there are none. [main]
    std::function<AAX_Result(AAX_CTypeID type, const void* data, std::uint32_t size)> notify;

    /// An integer property of the native routine, 0 when it is not there. [any]
    std::int32_t nativeProperty(AAX_EProperty property) const;
};

} // namespace varno

#endif
