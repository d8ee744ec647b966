#include "Commands.h"

#include "AudioFile/Reader.h"
#include "CommandLine/CommandError.h"
#include "CommandLine/CommandLine.h"
#include "CommandLine/Console.h"
#include "CommandLine/Interruption.h"
#include "Edit/EditSound.h"
#include "Session/EditorSession.h"
#include "Session/LiveBackend.h"
#include "Session/SettingsKeeper.h"
#include "Settings/ModuleLoading.h"
#include "Settings/Settings.h"

#include <filesystem>

namespace varno {
namespace {

constexpr std::string_view kEditUsage[] = {"[OPTIONS] [AUDIO]"};

constexpr std::string_view kEditDescription[] = {
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "Opens the effect's editor in a window of its own (X11, or Wayland through XWayland). The effect "
    "processes AUDIO in real time, in a loop: a mono file through the mono variant, a stereo file through "
    "the stereo one. Without AUDIO it processes silence. Its meters and its automatic volume follow.",
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "The result is played through JACK or, where no JACK server answers, through PulseAudio or ALSA. JACK "
    "sets the sample rate, and AUDIO is converted to it. Where nothing answers, the effect runs without "
    "sound output. varno play processes live sound instead of a file.",
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "Keys: Ctrl-S saves the settings as a state, Ctrl-C copies them and Ctrl-V pastes them as a preset, "
    "Escape and Ctrl-Q close the window.",
    "Ctrl-S writes the file of --save-state, else that of --state, else varno-s.state in the working folder, "
    "or varno-s-2.state and so on where that exists already. Settings that are not saved when the window "
    "closes are printed on standard error, as options that bring them back.",
    "Settings are applied in this order, and the later wins: the defaults, --state, --preset, --set in the "
    "order given.",
};

constexpr ArgumentEntry kEditArguments[] = {
    {.name = "AUDIO",
     .kind = ValueKind::kFile,
     .help = "Audio file to loop: WAV, W64, RF64, AIFF, CAF, FLAC, Ogg and more; \"-\" is standard input."},
};

constexpr int kUsualChannels = 2;

constexpr OptionEntry kEditOptions[] = {
    kSetOption,
    kPresetOption,
    kStateOption,
    {.name = "--save-state",
     .value = "FILE",
     .kind = ValueKind::kFile,
     .group = "Settings",
     .help = "The file that Ctrl-S writes."},
    kTruncatedOption,
    {.name = "--sound",
     .value = "KIND",
     .kind = ValueKind::kChoice,
     .choices = "auto jack rtaudio off",
     .group = "Sound",
     .help = "How the result is played: jack, rtaudio (PulseAudio or ALSA), auto for the first of them that "
             "answers (the default) or off."},
    {.name = "--rate",
     .value = "HZ",
     .kind = ValueKind::kNumber,
     .numbers = kSampleRates,
     .group = "Sound",
     .help = "Sample rate without AUDIO."},
    {.name = "--channels",
     .value = "N",
     .kind = ValueKind::kNumber,
     .numbers = {.least = 1, .most = kMostLiveChannels, .usual = kUsualChannels},
     .group = "Sound",
     .help = "Channels without AUDIO."},
    kScaleOption,
    {.name = "--screenshot",
     .value = "FILE",
     .kind = ValueKind::kFile,
     .group = "Window",
     .help = "Show the window for a moment, write a picture of it (PNG) and exit."},
    {.name = "--after",
     .value = "SECONDS",
     .kind = ValueKind::kNumber,
     .numbers = {.least = 0, .most = 3600, .usual = kUsualPictureDelayS},
     .group = "Window",
     .help = "Make the picture so long after the start."},
    {.name = "--force",
     .shortName = "-f",
     .group = "Window",
     .help = "Replace the files of --screenshot and --save-state where they exist."},
    kModuleOption,
    kHelpOption,
};

constexpr ExampleEntry kEditExamples[] = {
    {"varno edit drums.wav", "Turn the knobs while the drums play."},
    {"varno edit --state bus.state drums.wav", "Go on with saved settings; Ctrl-S saves them again."},
    {"varno edit --scale 2 --set Hot=0.4 --screenshot editor.png",
     "A picture of the editor, twice as large."},
};

// The word of --sound for an effect without sound output.
constexpr const char* kSoundOff = "off";

// The command line of `varno edit`.
struct EditOptions {
    std::optional<std::string> audio;     // path; nothing: silence
    double rateHz = kDefaultSampleRateHz; // of the silence
    int channels = kUsualChannels;
    bool acceptTruncated = false;
    std::string sound = kSoundOff; // a backend's word, kAnyBackend or kSoundOff
    WindowOptions window;
};

void refuseWith(const CommandLine& line, std::string_view option, bool isOther, std::string_view reason) {
    if (isOther && line.has(option)) {
        throw UsageError("option " + std::string(option) + ' ' + std::string(reason));
    }
}

EditOptions editOptions(const CommandLine& line) {
    EditOptions options;
    options.window = windowOptions(line, "edit");
    WindowOptions& window = options.window;
    if (!line.arguments().empty()) {
        options.audio = line.arguments().front();
        window.subject = std::filesystem::path(*options.audio).filename().string();
    }
    options.rateHz = line.number<double>("--rate").value_or(options.rateHz);
    options.channels = line.number<int>("--channels").value_or(options.channels);
    options.acceptTruncated = line.has(kTruncatedOption.name);
    window.screenshot = line.value("--screenshot");
    window.afterS = line.number<double>("--after").value_or(window.afterS);
    const bool hasAudio = options.audio.has_value();
    refuseWith(line, "--rate", hasAudio, "goes without AUDIO, which has a sample rate of its own");
    refuseWith(line, "--channels", hasAudio, "goes without AUDIO, which has channels of its own");
    refuseWith(line, kTruncatedOption.name, !hasAudio, "needs AUDIO, found none");
    refuseWith(line, "--sound", !hasAudio && line.value("--sound") != kSoundOff, "needs AUDIO, found none");
    refuseWith(line, "--after", !window.screenshot, "needs --screenshot FILE, found none");
    refuseWith(line, "--save-state", window.screenshot.has_value(), "goes without --screenshot");
    if (hasAudio && !window.screenshot) {
        options.sound = line.value("--sound").value_or(std::string(kAnyBackend));
    }
    return options;
}

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

Sound soundFor(const EditOptions& options, const Module& module) {
    if (!options.audio) {
        return {AudioLoop::silence(options.channels), options.rateHz, nullptr};
    }
    AudioReader reader(*options.audio,
                       {.goOn = throwIfInterrupted, .acceptTruncated = options.acceptTruncated});
    requireVariantFor(module, reader);
    if (!reader.truncation().empty()) {
        printWarning(reader.truncation());
    }
    Sound sound{AudioLoop::of(reader), static_cast<double>(reader.format().rateHz), nullptr};
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
    EditorSession session(options.window, connection, instance, keeper);
    session.loop().startTimer(kSoundCheckPeriod, &sound, [&] { sound.check(); });
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
    EditSound playing(instance, std::move(sound.loop), std::move(sound.backend));
    runSession(options, connection, instance, playing);
}

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

} // namespace

CommandEntry editCommand() {
    return {.name = "edit",
            .summary = "Open the effect's editor, around a file in a loop",
            .usage = kEditUsage,
            .description = kEditDescription,
            .arguments = kEditArguments,
            .leastArguments = 0,
            .mostArguments = 1,
            .options = kEditOptions,
            .examples = kEditExamples,
            .run = runEdit};
}

} // namespace varno
