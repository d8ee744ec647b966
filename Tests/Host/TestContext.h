/// Host objects without a module.
#ifndef VARNO_TESTS_HOST_TESTCONTEXT_H
#define VARNO_TESTS_HOST_TESTCONTEXT_H

#include "Host/HostObject.h"

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
