/// The host's diagnostics channel.
#ifndef VARNO_HOST_HOSTSERVICES_H
#define VARNO_HOST_HOSTSERVICES_H

#include "AAX_IACFHostServices.h"
#include "Host/HostObject.h"

namespace varno {

/// Host services versions 1 to 3: everything goes to the monitor, trace lines to the options' sink too. [any]
class HostServices : public HostObject<AAX_IACFHostServices_V3> {
public:
    explicit HostServices(std::shared_ptr<HostContext> context);

    AAX_Result Trace(std::int32_t priority, const char* message) override;
    AAX_Result StackTrace(std::int32_t tracePriority, std::int32_t stackTracePriority,
                          const char* message) override;
    AAX_Result HandleAssertFailure(const char* file, std::int32_t line, const char* note,
                                   std::int32_t flags) override;

protected:
    void* interfaceFor(const acfIID& iid) override;
};

} // namespace varno

#endif
