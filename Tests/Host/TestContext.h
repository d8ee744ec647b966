/// Host objects without a module.
#ifndef TESTCONTEXT_H
#define TESTCONTEXT_H

#include "HostContext.h"

#include <memory>

namespace varno {

/// A context with a monitor of its own.
inline std::shared_ptr<HostContext> testContext(HostOptions options = {}) {
    auto context = std::make_shared<HostContext>();
    context->monitor = std::make_shared<ContractMonitor>();
    context->options = std::move(options);
    return context;
}

} // namespace varno

#endif
