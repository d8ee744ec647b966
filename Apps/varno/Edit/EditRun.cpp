#include "AudioFile/Reader.h"
#include "CommandLine/CommandError.h"
#include "CommandLine/Console.h"
#include "CommandLine/Interruption.h"
#include "CommandLine/LibraryMessages.h"
#include "DemoGain_Oversampling.h"
#include "Edit/EditOptions.h"
#include "Edit/EditSound.h"
#include "Session/EditorSession.h"
#include "Session/LiveBackend.h"
#include "Settings/ModuleLoading.h"
#include "Settings/Quality.h"
#include "WindowCommands.h"

namespace varno {
namespace {

struct Sound {
    AudioLoop loop;
    double rateHz;
    std::unique_ptr<LiveBackend> backend; // null: no sound output
};

// A sound system that the user names must be available; any other may be missing.
std::unique_ptr<LiveBackend> openEditBackend(const EditOptions& options, int channels, double rateHz) {
    if (options.sound == kSoundOff) {
        return nullptr;
    }
    try {
        return openBackend(options.sound, {.inputs = 0, .outputs = channels, .rateHz = rateHz});
    } catch (const SoundUnavailable& error) {
        if (options.sound != kAnyBackend) {
            throw WorkError(error.what());
        }
        printWarning(std::string("the file is not played: ") + error.what());
        return nullptr;
    }
}

Sound readSound(const EditOptions& options, const Module& module) {
    const LibrariesSilenced whileItIsRead;
    AudioReader reader(*options.audio,
                       {.goOn = throwIfInterrupted, .acceptTruncated = options.acceptTruncated});
    requireVariantFor(module, reader);
    if (!reader.truncation().empty()) {
        printWarning(reader.truncation());
    }
    return {AudioLoop::of(reader), static_cast<double>(reader.format().rateHz), nullptr};
}

Sound soundFor(const EditOptions& options, const Module& module) {
    if (!options.audio) {
        return {AudioLoop::silence(options.channels), options.rateHz, nullptr};
    }
    Sound sound = readSound(options, module);
    sound.backend = openEditBackend(options, sound.loop.channels(), sound.rateHz);
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
    CompareSlots slots(settingsOf(instance));
    EditorSession session(options.window, connection,
                          {instance,
                           slots,
                           keeper,
                           {[&] { return sound.isBypassed(); }, [&](bool isOn) { sound.setBypassed(isOn); }},
                           {[&] { return qualityOf(sound.effect()); },
                            [&](std::int32_t factor) { sound.effect().setFactor(factor); }}});
    session.loop().startTimer(kSoundCheckPeriod, &sound, [&] {
        if (const auto warning = sound.check()) {
            session.showMessage(*warning);
        }
    });
    if (options.window.screenshot) {
        session.run();
    } else {
        runAndReportUnsaved(keeper, options.window.command, [&] { session.run(); });
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
    Oversampling effect(instance, {.routineLatencyFrames = kDemoGain_LatencyFrames,
                                   .factor = options.quality,
                                   .canChange = !options.window.screenshot});
    if (effect.factor() != effect.wish()) {
        printWarning(qualityText(effect));
    }
    EditSound playing(effect, std::move(sound.loop), std::move(sound.backend));
    runSession(options, connection, instance, playing);
}

} // namespace

int runEdit(const CommandLine& line) {
    const EditOptions options = editOptions(line);
    XConnection connection(environmentVariable("DISPLAY"));
    const Settings settings(line);
    checkFiles(options.window, settings, options.audio);
    printWarnings(settings.warnings());
    auto module = loadModule(line);
    edit(options, settings, connection, module);
    unloadModule(std::move(module));
    return kExitSuccess;
}

} // namespace varno
