/// What all objects made for one module share.
#ifndef HOSTCONTEXT_H
#define HOSTCONTEXT_H

#include "ContractMonitor.h"
#include "HostLedger.h"
#include "HostOptions.h"

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
