#include "Commands.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Console.h"
#include "CommandLine/Interruption.h"
#include "CommandLine/NumberText.h"
#include "CommandLine/VisibleText.h"
#include "Play/LiveEffect.h"
#include "Play/PlayOptions.h"
#include "Play/TerminalSession.h"
#include "Session/EditorSession.h"
#include "Session/LiveStatus.h"
#include "Session/SettingsKeeper.h"
#include "Settings/ModuleLoading.h"
#include "Settings/Settings.h"
#include "Window/XConnection.h"

namespace varno {
namespace {

constexpr std::string_view kPlayUsage[] = {"[OPTIONS]"};

constexpr std::string_view kPlayDescription[] = {
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "Plays live: what comes in goes through the effect and out again, until the user ends it. It is a "
    "client of a JACK server (jackd, or PipeWire by way of pw-jack) or, where none answers, of PulseAudio or "
    "ALSA by way of RtAudio.",
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "Under JACK the ports are named in_l, in_r, out_l and out_r, with --mono in and out, and report "
    "a latency of one frame. The server may change its period and its sample rate meanwhile. Blocks that "
    "came too late are counted and reported.",
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "Where there is a display the effect's editor opens, and closing it ends the program; Ctrl-S saves the "
    "settings as a state. Otherwise single keys work in the terminal, below a line with the meters: up and "
    "down choose a parameter, left and right change it, b bypasses, s saves, q ends, ? lists all keys. Where "
    "standard input is no terminal, it plays until it receives a signal.",
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "SIGINT (Ctrl-C), SIGTERM and SIGHUP end it with exit status 0. It ends with 1 where no sound system "
    "answers, and when the sound system ends.",
    "Settings are applied in this order, and the later wins: the defaults, --state, --preset, --set in the "
    "order given. Those that are not saved at the end are printed on standard error, as options that bring "
    "them back.",
};

constexpr OptionEntry kPlayOptions[] = {
    kSetOption,
    kPresetOption,
    kStateOption,
    {.name = "--save-state",
     .value = "FILE",
     .kind = ValueKind::kFile,
     .group = "Settings",
     .help = "The file that Ctrl-S or s writes. Default: that of --state, else varno-s.state, or "
             "varno-s-2.state and so on where that exists."},
    {.name = "--force",
     .shortName = "-f",
     .group = "Settings",
     .help = "Replace the file of --save-state where it exists."},
    {.name = "--backend",
     .value = "KIND",
     .kind = ValueKind::kChoice,
     .choices = "auto jack rtaudio",
     .group = "Sound",
     .help = "The sound system: jack, rtaudio (PulseAudio or ALSA), or auto for the first of them that "
             "answers (the default)."},
    {.name = "--mono",
     .excludes = "--stereo",
     .group = "Sound",
     .help = "One channel, through the mono variant."},
    {.name = "--stereo", .group = "Sound", .help = "Two channels, through the stereo variant (the default)."},
    {.name = "--name",
     .value = "NAME",
     .kind = ValueKind::kText,
     .group = "Sound",
     .help = "The name by which other programs see it. Default: varno."},
    {.name = "--connect",
     .excludes = "--no-connect",
     .group = "Sound",
     .help = "Connect the ports to the system's capture and playback (the default)."},
    {.name = "--no-connect",
     .group = "Sound",
     .help = "Leave the JACK ports unconnected, for a session manager or other programs to connect."},
    {.name = "--rate",
     .value = "HZ",
     .kind = ValueKind::kNumber,
     .numbers = kSampleRates,
     .group = "Sound",
     .help = "Sample rate for rtaudio; JACK has its own."},
    {.name = "--period",
     .value = "FRAMES",
     .kind = ValueKind::kNumber,
     .numbers = {.least = 16, .most = 8192, .usual = kUsualPeriodFrames},
     .group = "Sound",
     .help = "Frames at a time for rtaudio; JACK has its own."},
    {.name = "--edit",
     .excludes = "--no-edit",
     .group = "Window",
     .help = "Open the editor (the default where DISPLAY is set)."},
    {.name = "--no-edit", .excludes = "--scale", .group = "Window", .help = "Stay in the terminal."},
    kScaleOption,
    {.name = "--quiet",
     .shortName = "-q",
     .group = "General",
     .help = "Print only errors and the settings that are not saved."},
    kModuleOption,
    kHelpOption,
};

constexpr ExampleEntry kPlayExamples[] = {
    {"varno play", "Between the system's inputs and outputs, with the editor."},
    {"pw-jack varno play --mono --set Hot=0.3", "One channel, on a desktop with PipeWire."},
    {"varno play --no-connect --no-edit --name drive --state bus.state",
     "For scripts: ports drive:in_l and so on, connected by jack_connect."},
};

// Without --edit, a display that cannot be opened is only a warning.
std::unique_ptr<XConnection> connectionFor(const PlayOptions& options) {
    const std::string display = environmentVariable("DISPLAY");
    if (!options.editor.value_or(!display.empty())) {
        return nullptr;
    }
    try {
        return std::make_unique<XConnection>(display);
    } catch (const WindowError& error) {
        if (options.editor) {
            throw;
        }
        printWarning(std::string("without the editor: ") + error.what());
        return nullptr;
    }
}

std::unique_ptr<LiveBackend> openPlayBackend(const PlayOptions& options) {
    try {
        return openBackend(options.backend, options.request);
    } catch (const SoundUnavailable& error) {
        throw WorkError(error.what());
    }
}

// The effect in live use, from the start of the sound system to its end.
class Play {
public:
    Play(const PlayOptions& options, LiveBackend& backend, LiveEffect& effect, XConnection* connection)
        : mOptions(options),
          mBackend(backend),
          mEffect(effect),
          mConnection(connection),
          mWatch(backend.status(), backend.description()),
          mSettings(effect.instance()) {
        chooseSettingsFile(mSettings, options.window);
    }

    // A change of the sample rate ends a session and starts the next.
    void run() {
        runAndReportUnsaved(mSettings, mOptions.window.command, [this] {
            runSession();
            while (mWatch.hasNewRate()) {
                mEffect.setRate(mWatch.followRate());
                mSettings.follow(mEffect.instance());
                announce();
                runSession();
            }
        });
    }

    void announce() const {
        if (!mOptions.isQuiet) {
            const LiveStatus& status = mBackend.status();
            printErr("playing: " + visibleLine(mBackend.description()) + ", " +
                     textFromNumber(status.rateHz()) + " Hz, " + std::to_string(status.blockFrames()) +
                     " frames" + endHint() + '\n');
        }
    }

private:
    void runSession() {
        if (mConnection != nullptr) {
            EditorSession session(mOptions.window, *mConnection, mEffect.instance(), mSettings);
            watchAndRun(session);
        } else {
            TerminalSession session(mEffect.instance(), mSettings, mWatch);
            watchAndRun(session);
        }
    }

    template<class Session>
    void watchAndRun(Session& session) {
        session.loop().startTimer(kSoundCheckPeriod, this, [&] {
            mBackend.check();
            mWatch.requireRunning();
            reportOverruns();
            if (mWatch.hasNewRate()) {
                session.loop().quit();
            }
        });
        session.run();
    }

    // The line in the terminal shows them already.
    void reportOverruns() {
        const bool isShown = mConnection == nullptr && takesKeys(STDIN_FILENO);
        if (const auto overruns = mWatch.newOverruns(); overruns && !isShown && !mOptions.isQuiet) {
            printWarning(*overruns);
        }
    }

    std::string endHint() const {
        if (mConnection != nullptr) {
            return "";
        }
        return takesKeys(STDIN_FILENO) ? "; ? shows the keys, q ends" : "; a signal ends it";
    }

    const PlayOptions& mOptions;
    LiveBackend& mBackend;
    LiveEffect& mEffect;
    XConnection* mConnection;
    LiveWatch mWatch;
    SettingsKeeper mSettings;
};

void play(const PlayOptions& options, const Settings& settings, XConnection* connection,
          const std::shared_ptr<Module>& module) {
    std::optional<LiveEffect> effect; // outlives the sound system that processes with it
    const auto backend = openPlayBackend(options);
    effect.emplace(module, options.request.outputs, backend->status().rateHz());
    settings.applyTo(effect->instance());
    Play playing(options, *backend, *effect, connection);
    try {
        backend->start(effect->process());
        playing.announce();
        playing.run();
    } catch (const SoundUnavailable& error) {
        throw WorkError(backend->description() + ": " + error.what());
    } catch (const Interrupted&) {
        // A signal is the normal end of live use.
        clearInterruption();
    }
}

int runPlay(const CommandLine& line) {
    const PlayOptions options = playOptions(line);
    const auto connection = connectionFor(options);
    const Settings settings(line);
    checkFiles(options.window, settings);
    if (!options.isQuiet) {
        printWarnings(settings.warnings());
    }
    auto module = loadModule(line);
    play(options, settings, connection.get(), module);
    unloadModule(std::move(module));
    return kExitSuccess;
}

} // namespace

CommandEntry playCommand() {
    return {.name = "play",
            .summary = "Play live through the effect",
            .usage = kPlayUsage,
            .description = kPlayDescription,
            .arguments = {},
            .leastArguments = 0,
            .mostArguments = 0,
            .options = kPlayOptions,
            .examples = kPlayExamples,
            .run = runPlay};
}

} // namespace varno
