#include "LV2/SharedModule.h"

#include "DemoGain_SampleRates.h"
#include "Host/Module.h"

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
        HostOptions options;
        options.sampleRates = {DemoGain_SampleRates::kLowestHz, DemoGain_SampleRates::kHighestHz};
        module = Module::linked(linkedEntryPoints(), options);
        gModule = module;
    }
    return module;
}

} // namespace varno
