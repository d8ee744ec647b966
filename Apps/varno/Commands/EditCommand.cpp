#include "AudioReader.h"
#include "CommandError.h"
#include "Commands.h"
#include "EditSession.h"
#include "InputFormat.h"
#include "ModuleLoading.h"
#include "Settings.h"

#include <cstdlib>

namespace varno {
namespace {

struct Sound {
    AudioLoop loop;
    double rateHz;
};

void refuseOutputs(const EditOptions& options, const AudioReader& reader) {
    for (const auto* output : {&options.screenshot, &options.saveState}) {
        if (*output) {
            refuseSameFile(reader.identity(), reader.name(), **output);
        }
    }
}

Sound soundFor(const EditOptions& options, const Module& module) {
    if (!options.audio) {
        return {AudioLoop::silence(options.channels), options.rateHz};
    }
    AudioReader reader(*options.audio);
    requireVariantFor(module, reader);
    refuseOutputs(options, reader);
    return {AudioLoop::of(reader), static_cast<double>(reader.format().rateHz)};
}

void edit(const EditOptions& options, const Settings& settings, XConnection& connection,
          const std::shared_ptr<Module>& module) {
    Sound sound = soundFor(options, *module);
    InstanceSetup setup;
    setup.channels = sound.loop.channels();
    setup.sampleRateHz = sound.rateHz;
    Instance instance(module, setup);
    settings.applyTo(instance);
    EditSession(options, connection, instance, std::move(sound.loop)).run();
}

} // namespace

int runEdit(const CommandLine& line) {
    const EditOptions options = editOptions(line);
    const char* display = std::getenv("DISPLAY");
    XConnection connection(display == nullptr ? "" : display);
    const Settings settings(line);
    auto module = loadModule(line);
    edit(options, settings, connection, module);
    unloadModule(std::move(module));
    return kExitSuccess;
}

} // namespace varno
