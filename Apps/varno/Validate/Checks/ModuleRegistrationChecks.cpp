#include "Validate/Checks/ModuleRegistrationChecks.h"

#include "AAX_UIDs.h"
#include "ACF/ACFPtr.h"
#include "Host/Module.h"
#include "Validate/Allocations.h"
#include "Validate/Binaries.h"
#include "Validate/Module/RawHost.h"
#include "Validate/Module/RawRegistrar.h"

#include <functional>
#include <optional>

namespace varno::validate {
namespace {

constexpr int kMostRounds = 500;

// One of a module's exported functions, with a host.
struct EntryCall {
    const char* name;
    // Whether it succeeded.
    bool (*call)(const ModuleEntryPoints& entries, RawRegistrar& host);
};

bool registerPlugin(const ModuleEntryPoints& entries, RawRegistrar& host) {
    IACFPluginDefinition* definition = nullptr;
    const ACFRESULT result = entries.registerPlugin(&host.unknown(), &definition);
    (void)ACFPtr<IACFPluginDefinition>::Adopt(definition);
    return result == ACF_OK;
}

bool registerComponents(const ModuleEntryPoints& entries, RawRegistrar& host) {
    IACFComponentDefinition* definition = nullptr;
    const ACFRESULT result = entries.registerComponent(&host.unknown(), 0, &definition);
    (void)ACFPtr<IACFComponentDefinition>::Adopt(definition);
    return result == ACF_OK;
}

bool getClassFactory(const ModuleEntryPoints& entries, RawRegistrar& host) {
    void* factory = nullptr;
    const ACFRESULT result =
        entries.getClassFactory(&host.unknown(), AAXCompID_HostServices, IID_IACFUnknown, &factory);
    (void)ACFPtr<IACFUnknown>::Adopt(static_cast<IACFUnknown*>(factory));
    return result == ACF_OK;
}

constexpr EntryCall kEntryCalls[] = {
    {"ACFStartup", [](const ModuleEntryPoints& entries,
                      RawRegistrar& host) { return entries.startup(&host.unknown()) == ACF_OK; }},
    {"ACFRegisterPlugin", registerPlugin},
    {"ACFRegisterComponent", registerComponents},
    {"ACFGetClassFactory", getClassFactory},
    {"ACFCanUnloadNow", [](const ModuleEntryPoints& entries,
                           RawRegistrar& host) { return entries.canUnloadNow(&host.unknown()) == 0; }},
    {"ACFShutdown", [](const ModuleEntryPoints& entries,
                       RawRegistrar& host) { return entries.shutdown(&host.unknown()) == ACF_OK; }},
};

// A call of a module that was started, or that is started or shut down by it.
void callOnce(const ModuleEntryPoints& entries, RawRegistrar& host, const EntryCall& each,
              const std::function<void()>& call) {
    const bool isStart = &each == &kEntryCalls[0];
    const bool isEnd = &each == std::end(kEntryCalls) - 1;
    if (!isStart) {
        entries.startup(&host.unknown());
    }
    call();
    if (!isEnd) {
        entries.shutdown(&host.unknown());
    }
}

// What may not remain after the last call: objects, and references to the host.
void requireNothingKept(Context& context, const ModuleEntryPoints& entries, RawRegistrar& host,
                        const std::string& what) {
    host.setHook({});
    const std::int32_t objects = entries.canUnloadNow(&host.unknown());
    context.expect(objects == 0, std::to_string(objects) + " objects left after " + what, "none");
    context.expect(host.references() == 0,
                   std::to_string(host.references()) + " references to the host left after " + what, "none");
}

// Describes it with nothing against it.
void requireDescription(Context& context, const ModuleEntryPoints& entries, const std::string& when) {
    RawRegistrar host;
    entries.startup(&host.unknown());
    const bool isDescribed = registerPlugin(entries, host) && host.effects() > 0;
    entries.shutdown(&host.unknown());
    context.expect(isDescribed, "no effect described " + when, "the effects of the module");
}

} // namespace

void checkRegistrationWithThrowingHost(Context& context) {
    const ModuleBinary binary(context.path());
    const ModuleEntryPoints& entries = binary.entryPoints();
    requireDescription(context, entries, "at first");
    for (const EntryCall& each : kEntryCalls) {
        for (int calls = 0; calls < kMostRounds; ++calls) {
            const std::string what =
                std::string(each.name) + " with a host that throws at its call " + std::to_string(calls + 1);
            context.step(what);
            RawRegistrar host;
            bool hasThrown = false;
            bool hasEscaped = false;
            callOnce(entries, host, each, [&] {
                host.setHook([&, hook = throwAfter(calls)]() mutable {
                    hasThrown = true;
                    hook();
                    hasThrown = false;
                });
                try {
                    (void)each.call(entries, host);
                } catch (...) {
                    hasEscaped = true;
                }
                host.setHook({});
            });
            if (!context.expect(!hasEscaped, "an exception out of " + what, "a result code")) {
                return;
            }
            requireNothingKept(context, entries, host, what);
            if (!hasThrown) {
                break;
            }
        }
    }
    requireDescription(context, entries, "after hosts that throw");
}

void checkRegistrationWithoutMemory(Context& context) {
    if (!canRefuseMemory()) {
        context.skip("a build with a sanitizer cannot refuse memory");
    }
    const ModuleBinary binary(context.path());
    const ModuleEntryPoints& entries = binary.entryPoints();
    const FailingAllocations::Code code(binariesOf(context.path(), Format::kModule).front());
    int refusals = 0;
    for (const EntryCall& each : kEntryCalls) {
        for (int allocations = 0; allocations < kMostRounds; ++allocations) {
            const std::string what = std::string(each.name) + " without memory after " +
                                     std::to_string(allocations) + " allocations";
            context.step(what);
            RawRegistrar host;
            bool hasFailed = false;
            bool hasEscaped = false;
            callOnce(entries, host, each, [&] {
                FailingAllocations failing(code, allocations);
                try {
                    (void)each.call(entries, host);
                } catch (...) {
                    hasEscaped = true;
                }
                hasFailed = failing.end();
            });
            if (!context.expect(!hasEscaped, "an exception out of " + what, "a result code")) {
                return;
            }
            requireNothingKept(context, entries, host, what);
            if (!hasFailed) {
                break;
            }
            ++refusals;
        }
    }
    requireDescription(context, entries, "after calls without memory");
    if (refusals == 0) {
        context.skip("the module takes no memory of the C library itself");
    }
}

} // namespace varno::validate
