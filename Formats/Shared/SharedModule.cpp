#include "Shared/SharedModule.h"

#include "Host/Module.h"
#include "Surround/Settings/EffectHost.h"

namespace varno {

namespace {

std::mutex gMutex;
std::weak_ptr<Module> gModule; // Under the mutex.

} // namespace

SharedModule::SharedModule()
    : mLock(gMutex) {
}

std::shared_ptr<Module> SharedModule::get() const {
    std::shared_ptr<Module> module = gModule.lock();
    if (module == nullptr) {
        module = Module::linked(linkedEntryPoints(), effectHostOptions());
        gModule = module;
    }
    return module;
}

} // namespace varno
