/// The module that this binary is linked with, shared by all plug-ins of it.
#ifndef VARNO_FORMATS_SHARED_SHAREDMODULE_H
#define VARNO_FORMATS_SHARED_SHAREDMODULE_H

#include "Host/Module.h"

#include <memory>
#include <mutex>

namespace varno {

/// The module and the making and ending of its instances belong to one thread at a time, but hosts make
/// plug-ins on several: code that makes or ends one holds this. [main]
class SharedModule {
public:
    SharedModule();

    /// The module, started with the first plug-in and shut down with the last. Throws HostError when it
    /// cannot be started.
    std::shared_ptr<Module> get() const;

private:
    std::unique_lock<std::mutex> mLock;
};

} // namespace varno

#endif
