#include "Validate/Checks/ModuleLifeChecks.h"

#include "AAX_UIDs.h"
#include "Host/HostError.h"
#include "Host/Instance.h"
#include "Host/InstanceHost.h"
#include "Host/Module.h"
#include "Validate/Allocations.h"
#include "Validate/Binaries.h"
#include "Validate/Module/RawHost.h"
#include "Validate/Module/RawModel.h"

#include <cstring>
#include <functional>

namespace varno::validate {
namespace {

constexpr std::int32_t kRawFrames = 64;

// The first of those that are checked.
const EffectDescription& firstEffect(const Context& context, const Module& module) {
    for (const EffectDescription& effect : module.description().effects) {
        if (context.selection().has(effect.id)) {
            return effect;
        }
    }
    throw HostError("the module has no effect");
}

InstanceSetup setupOf(const EffectDescription& effect, const VariantDescription& variant) {
    return {.channels = variant.inputChannels(), .maximumFrames = kRawFrames, .effectID = effect.id};
}

std::string firstParameter(Context& context) {
    const auto plugin = context.open();
    const auto instance = plugin->create(plugin->plugins().at(0), kDefaultSampleRateHz, kRawFrames);
    return instance->parameters().empty() ? "none" : instance->parameters().front().id;
}

// Calls `action` with every sequence of calls of up to `longest`, by their numbers.
void forEachOrder(std::size_t calls, std::size_t longest,
                  const std::function<void(const std::vector<std::size_t>&)>& action) {
    std::vector<std::size_t> order(1, 0);
    while (order.size() <= longest) {
        action(order);
        // The next one: as a number with `calls` digits, then one digit more.
        std::size_t place = order.size();
        while (place > 0 && ++order[place - 1] == calls) {
            order[--place] = 0;
        }
        if (place == 0) {
            order.assign(order.size() + 1, 0);
        }
    }
}

std::string namesOf(const std::vector<std::size_t>& order) {
    std::string names;
    for (const std::size_t call : order) {
        names += (names.empty() ? "" : ", ") + std::string(rawCalls()[call].name);
    }
    return names;
}

// As much of a module's use as the host allows.
void useModule(const Context& context, const std::shared_ptr<Module>& module) {
    const EffectDescription& effect = firstEffect(context, *module);
    for (const VariantDescription& variant : effect.variants) {
        Instance instance(module, setupOf(effect, variant));
        for (const ParameterInfo& parameter : instance.parameters()) {
            instance.setNormalized(parameter.id, 1.0);
            instance.requestNormalized(parameter.id, parameter.defaultNormalized);
        }
        instance.idle();
        instance.restore(instance.save());
        instance.timer();
    }
}

// Reports what remains after the last use of a module.
void requireNothingLeft(Context& context, const ContractMonitor& monitor, const std::string& when) {
    for (const Violation& violation : monitor.violations()) {
        const bool isAboutLife =
            violation.contract == Contract::kReferences || violation.contract == Contract::kLiveObjects ||
            violation.contract == Contract::kLifecycle || violation.contract == Contract::kThread;
        if (isAboutLife) {
            context.fail(when + ": " + violation.text, "nothing left and no call out of order");
        }
    }
}

struct HostInterface {
    const char* name;
    acfIID iid;
};

constexpr HostInterface kHostInterfaces[] = {
    {"IACFPluginDefinition", IID_IACFPluginDefinition},
    {"IACFComponentFactory", IID_IACFComponentFactory},
    {"collection", IID_IAAXCollectionV1},
    {"effect descriptor", IID_IAAXEffectDescriptorV1},
    {"component descriptor", IID_IAAXComponentDescriptorV1},
    {"property map", IID_IAAXPropertyMapV1},
    {"description host", IID_IAAXDescriptionHostV1},
    {"feature info", IID_IAAXFeatureInfoV1},
    {"host services", IID_IAAXHostServicesV1},
    {"host services 2", IID_IAAXHostServicesV2},
    {"host services 3", IID_IAAXHostServicesV3},
    {"controller", IID_IAAXControllerV1},
    {"controller 2", IID_IAAXControllerV2},
    {"controller 3", IID_IAAXControllerV3},
    {"transport", IID_IAAXTransportV1},
    {"transport 2", IID_IAAXTransportV2},
    {"transport 3", IID_IAAXTransportV3},
    {"automation", IID_IAAXAutomationDelegateV1},
    {"page table controller", IID_IAAXPageTableController},
    {"page table controller 2", IID_IAAXPageTableControllerV2},
    {"page table", IID_IAAXPageTableV1},
    {"page table 2", IID_IAAXPageTableV2},
    {"data model", IID_IAAXEffectParametersV1},
};

void useWithout(Context& context, const std::vector<acfIID>& withheld, const std::string& names) {
    context.step("a host without " + names);
    HostOptions options;
    options.withheld = withheld;
    options.monitor = std::make_shared<ContractMonitor>();
    try {
        useModule(context, Module::open(context.path(), options));
    } catch (const HostError&) { // A module may need what it lacks; it must say so.
    }
    requireNothingLeft(context, *options.monitor, "without " + names);
}

} // namespace

void checkCallOrders(Context& context) {
    constexpr std::size_t kLongest = 4;
    const std::string parameter = firstParameter(context);
    HostOptions options;
    options.monitor = std::make_shared<ContractMonitor>();
    const auto module = Module::open(context.path(), options);
    const EffectDescription& effect = firstEffect(context, *module);
    const VariantDescription& variant = effect.variants.at(0);
    const InstanceSetup setup = setupOf(effect, variant);
    const StoredChunk chunk = Instance(module, setup).save();
    forEachOrder(rawCalls().size(), kLongest, [&](const std::vector<std::size_t>& order) {
        context.step(namesOf(order));
        HostReference<InstanceHost> host(new InstanceHost(module->context(), effect, variant, setup),
                                         "instance host");
        {
            const auto model = makeModel(effect);
            const RawModel raw{*model.Get(), *host, chunk, parameter};
            for (const std::size_t call : order) {
                rawCalls()[call].call(raw);
            }
            model->Uninitialize();
        }
        context.expect(module->liveObjects() == 0,
                       std::to_string(module->liveObjects()) + " objects left after " + namesOf(order),
                       "none");
    });
    requireNothingLeft(context, *options.monitor, "after all orders of calls");
}

void checkWithheldInterfaces(Context& context) {
    for (std::size_t one = 0; one < std::size(kHostInterfaces); ++one) {
        useWithout(context, {kHostInterfaces[one].iid}, kHostInterfaces[one].name);
        for (std::size_t other = one + 1; other < std::size(kHostInterfaces); ++other) {
            useWithout(context, {kHostInterfaces[one].iid, kHostInterfaces[other].iid},
                       std::string(kHostInterfaces[one].name) + " and " + kHostInterfaces[other].name);
        }
    }
}

void checkThrowingHost(Context& context) {
    // More calls than a data model makes of its host in any of these.
    constexpr int kMostCalls = 200;
    const std::string parameter = firstParameter(context);
    const auto module = Module::open(context.path());
    const EffectDescription& effect = firstEffect(context, *module);
    const StoredChunk chunk = Instance(module, setupOf(effect, effect.variants.at(0))).save();
    for (const RawCall& each : rawCalls()) {
        for (int calls = 0; calls < kMostCalls; ++calls) {
            RawHost host;
            const auto model = makeModel(effect);
            const RawModel raw{*model.Get(), host.unknown(), chunk, parameter};
            const bool isFirst = std::strcmp(each.name, "Initialize") == 0;
            if (!isFirst) {
                model->Initialize(&host.unknown());
            }
            const std::string what =
                std::string(each.name) + " with a host that throws at its call " + std::to_string(calls + 1);
            context.step(what);
            host.setHook(throwAfter(calls));
            try {
                each.call(raw);
            } catch (...) {
                context.fail("an exception out of " + what, "a result code");
                return;
            }
            host.setHook({});
            model->Uninitialize();
        }
    }
    context.expect(module->liveObjects() == 0, std::to_string(module->liveObjects()) + " objects left",
                   "none");
}

// Makes a call again and again, each time with one allocation more that succeeds, until none fails or it has
// taken as many as are looked at. @param call returns whether an allocation has failed @return how often
int refuseEach(Context& context, const std::string& name, const std::function<bool(int)>& call) {
    constexpr int kMostAllocations = 500;
    for (int allocations = 0; allocations < kMostAllocations; ++allocations) {
        const std::string what =
            name + " without memory after " + std::to_string(allocations) + " allocations";
        context.step(what);
        try {
            if (!call(allocations)) {
                return allocations;
            }
        } catch (...) {
            context.fail("an exception out of " + what, "a result code");
            return allocations;
        }
    }
    return kMostAllocations;
}

void checkFailingAllocations(Context& context) {
    if (!canRefuseMemory()) {
        context.skip("a build with a sanitizer cannot refuse memory");
    }
    const std::string parameter = firstParameter(context);
    HostOptions options;
    options.monitor = std::make_shared<ContractMonitor>();
    const auto module = Module::open(context.path(), options);
    const FailingAllocations::Code code(binariesOf(context.path(), Format::kModule).front());
    const EffectDescription& effect = firstEffect(context, *module);
    const VariantDescription& variant = effect.variants.at(0);
    const InstanceSetup setup = setupOf(effect, variant);
    const StoredChunk chunk = Instance(module, setup).save();
    int refusals = 0;
    const auto failEach = [&](const std::string& name, const std::function<bool(int)>& call) {
        refusals += refuseEach(context, name, call);
    };
    failEach("the creation procedure", [&](int allocations) {
        FailingAllocations failing(code, allocations);
        IACFUnknown* const made = effect.procedure(kAAX_ProcPtrID_Create_EffectParameters)();
        const bool hasFailed = failing.end();
        (void)ACFPtr<IACFUnknown>::Retain(made);
        return hasFailed;
    });
    for (const RawCall& each : rawCalls()) {
        failEach(each.name, [&](int allocations) {
            HostReference<InstanceHost> host(new InstanceHost(module->context(), effect, variant, setup),
                                             "instance host");
            const auto model = makeModel(effect);
            const RawModel raw{*model.Get(), *host, chunk, parameter};
            if (std::strcmp(each.name, "Initialize") != 0) {
                model->Initialize(host.get());
            }
            FailingAllocations failing(code, allocations);
            each.call(raw);
            const bool hasFailed = failing.end();
            model->Uninitialize();
            return hasFailed;
        });
    }
    context.expect(module->liveObjects() == 0, std::to_string(module->liveObjects()) + " objects left",
                   "none");
    requireNothingLeft(context, *options.monitor, "after calls without memory");
    if (refusals == 0) {
        context.skip("the module takes no memory of the C library itself");
    }
}

} // namespace varno::validate
