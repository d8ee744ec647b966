// A host's way to an effect: the module loaded from its bundle and described, and an instance of it.
#include "Benchmarks/PricedLoop.h"
#include "Host/Instance.h"
#include "Host/Module.h"

namespace varno::bench {
namespace {

// In a process that has had the module before: what a system loads with it for the first time is in memory.
void load(benchmark::State& state) {
    std::shared_ptr<Module> module = Module::open(VARNO_BUNDLE);
    measurePriced(
        state, 1, [&] { module.reset(); }, [&] { module = Module::open(VARNO_BUNDLE); });
}
BENCHMARK(load)->Name("module/load_and_describe")->UseManualTime()->Unit(benchmark::kMicrosecond);

// A stereo instance, ready for its first buffer.
void instance(benchmark::State& state) {
    const std::shared_ptr<Module> module = Module::open(VARNO_BUNDLE);
    std::unique_ptr<Instance> created;
    measurePriced(
        state, 1, [&] { created.reset(); },
        [&] { created = std::make_unique<Instance>(module, InstanceSetup{}); });
}
BENCHMARK(instance)->Name("module/instance")->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace varno::bench
