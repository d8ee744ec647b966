#include "AudioFile/Reader.h"
#include "BackendChoice.h"
#include "CommandError.h"
#include "Commands.h"
#include "Console.h"
#include "EditOptions.h"
#include "EditSession.h"
#include "EditSound.h"
#include "InputFormat.h"
#include "Interruption.h"
#include "ModuleLoading.h"
#include "Settings.h"
#include "SettingsKeeping.h"

#include <cstdlib>

namespace varno {
namespace {

// The pace at which the sound system is looked after.
constexpr std::chrono::milliseconds kSoundCheck(100);

struct Sound {
    AudioLoop loop;
    double rateHz;
    std::unique_ptr<LiveBackend> backend; // null: nobody hears it
};

void refuseOutputs(const WindowOptions& options, const AudioReader& reader) {
    for (const auto* output : {&options.screenshot, &options.saveState}) {
        if (*output) {
            refuseSameFile(reader.identity(), reader.name(), **output);
        }
    }
}

// A sound system that was asked for by name must be there; any other may be missing.
std::unique_ptr<LiveBackend> backendFor(const EditOptions& options, int channels, double rateHz) {
    if (options.sound == kSoundOff) {
        return nullptr;
    }
    try {
        return openBackend(options.sound, {.inputs = 0, .outputs = channels, .rateHz = rateHz});
    } catch (const SoundUnavailable& error) {
        if (options.sound != kAnyBackend) {
            throw WorkError(error.what());
        }
        printWarning(std::string("the file is not heard: ") + error.what());
        return nullptr;
    }
}

Sound soundFor(const EditOptions& options, const Module& module) {
    if (!options.audio) {
        return {AudioLoop::silence(options.channels), options.rateHz, nullptr};
    }
    AudioReader reader(*options.audio, throwIfInterrupted);
    requireVariantFor(module, reader);
    refuseOutputs(options.window, reader);
    Sound sound{AudioLoop::of(reader), static_cast<double>(reader.format().rateHz), nullptr};
    sound.backend = backendFor(options, sound.loop.channels(), sound.rateHz);
    if (sound.backend != nullptr && sound.backend->status().rateHz() != sound.rateHz) {
        const double rateHz = sound.backend->status().rateHz();
        sound.loop = sound.loop.resampled(sound.rateHz, rateHz);
        sound.rateHz = rateHz;
    }
    return sound;
}

void runSession(const EditOptions& options, XConnection& connection, Instance& instance, EditSound& sound) {
    SettingsKeeper keeper(instance);
    chooseSettingsFile(keeper, options.window);
    EditSession session(options.window, connection, instance, keeper);
    session.loop().startTimer(kSoundCheck, &sound, [&] { sound.check(); });
    if (options.window.screenshot) {
        session.run();
    } else {
        runAndTellUnsaved(keeper, options.window.command, [&] { session.run(); });
    }
}

void edit(const EditOptions& options, const Settings& settings, XConnection& connection,
          const std::shared_ptr<Module>& module) {
    Sound sound = soundFor(options, *module);
    InstanceSetup setup;
    setup.channels = sound.loop.channels();
    setup.sampleRateHz = sound.rateHz;
    Instance instance(module, setup);
    settings.applyTo(instance);
    EditSound playing(instance, std::move(sound.loop), std::move(sound.backend));
    runSession(options, connection, instance, playing);
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
