/// What all objects made for one module share.
#ifndef VARNO_HOST_HOSTCONTEXT_H
#define VARNO_HOST_HOSTCONTEXT_H

#include "Host/ContractMonitor.h"
#include "Host/HostLedger.h"
#include "Host/HostOptions.h"

#include <filesystem>
#include <memory>

namespace varno {

/// Held by the module and by every host object made for it, so that an object which the module never gives
/// back stays whole.
struct HostContext {
    HostOptions options;
    std::shared_ptr<ContractMonitor> monitor;
    HostLedger ledger;
    std::filesystem::path resources; ///< The module's resource folder; empty when it has none.
};

} // namespace varno

#endif
