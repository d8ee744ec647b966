#include "CommandLine/CommandError.h"
#include "CommandLine/Console.h"
#include "CommandLine/Interruption.h"
#include "CommandLine/VisibleText.h"
#include "Play/LiveEffect.h"
#include "Play/PlayOptions.h"
#include "Play/StatisticsReport.h"
#include "Play/TerminalSession.h"
#include "Session/EditorSession.h"
#include "Session/LiveStatus.h"
#include "Session/LoopPlayer.h"
#include "Settings/ModuleLoading.h"
#include "Settings/Quality.h"
#include "Surround/Settings/NumberText.h"
#include "Window/XConnection.h"
#include "WindowCommands.h"

namespace varno {
namespace {

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

std::unique_ptr<LiveBackend> openPlayBackend(const PlayOptions& options, BlockStatistics& statistics) {
    LiveRequest request = options.request;
    request.statistics = options.statistics == StatisticsForm::kNone ? nullptr : &statistics;
    try {
        return openBackend(options.backend, request);
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
          mSettings(effect.instance()),
          mSlots(settingsOf(effect.instance())) {
        chooseSettingsFile(mSettings, options.window);
    }

    // A change of the sample rate ends a session and starts the next. Returns the exit status.
    int run() {
        runAndReportUnsaved(mSettings, mOptions.window.command, [this] {
            runSession();
            while (mWatch.hasNewRate()) {
                mEffect.setRate(mWatch.followRate());
                mSettings.follow(mEffect.instance());
                announce();
                runSession();
            }
        });
        if (const auto overruns = warns() ? mWatch.laterOverruns() : std::nullopt) {
            printWarning(*overruns);
        }
        return mSilence ? kExitWorkFailed : kExitSuccess;
    }

    void announce() const {
        if (!mOptions.isQuiet) {
            const LiveStatus& status = mBackend.status();
            printErr("playing: " + visibleLine(mBackend.description()) + ", " +
                     textFromNumber(status.rateHz()) + " Hz, " + std::to_string(status.blockFrames()) +
                     " frames" + qualityHint() + endHint() + '\n');
        }
    }

private:
    void runSession() {
        if (mConnection != nullptr) {
            EditorSession session(
                mOptions.window, *mConnection,
                {mEffect.instance(),
                 mSlots,
                 mSettings,
                 {[this] { return mEffect.isBypassed(); }, [this](bool isOn) { mEffect.setBypassed(isOn); }},
                 {[this] { return qualityOf(mEffect.oversampling()); },
                  [this](std::int32_t factor) { mEffect.oversampling().setFactor(factor); }}});
            watchAndRun(session);
        } else {
            TerminalSession session(mEffect, mSettings, mWatch);
            watchAndRun(session);
        }
    }

    template<class Session>
    void watchAndRun(Session& session) {
        session.loop().startTimer(kSoundCheckPeriod, this, [&] {
            if (mSilence) {
                return;
            }
            mBackend.check();
            mBackend.setLatency(mEffect.oversampling().latencyFrames());
            try {
                mWatch.requireRunning();
            } catch (const WorkError& error) {
                soundEnded(error, session);
            }
            if (const auto overruns = warns() ? mWatch.firstOverruns() : std::nullopt) {
                printWarning(*overruns);
            }
            if (const auto overruns = mWatch.newOverruns()) {
                show(*overruns, session);
            }
            if (mWatch.hasNewRate()) {
                session.loop().quit();
            }
        });
        session.run();
    }

    // The line in the terminal shows them already.
    static void show(const std::string& /*overruns*/, const TerminalSession&) {}
    static void show(const std::string& overruns, EditorSession& session) { session.showMessage(overruns); }
    bool warns() const { return !mOptions.isQuiet && (mConnection != nullptr || !takesKeys(STDIN_FILENO)); }

    void soundEnded(const WorkError& error, const TerminalSession&) const { throw error; }
    // A window that can show it stays, with silence in the place of the input: its settings can be saved.
    void soundEnded(const WorkError& error, EditorSession& session) {
        if (!session.hasBar()) {
            throw error;
        }
        printError(error.what());
        session.showMessage("the sound system has ended"); // the bar has no room for more
        const InstanceSetup& setup = mEffect.instance().setup();
        mSilence.emplace(PlayerFormat{mWatch.rateHz(), setup.channels, setup.maximumFrames},
                         [process = mEffect.process(), silence = AudioLoop::silence(setup.channels)](
                             float* const* channels, int frames) mutable {
                             silence.read(channels, frames);
                             process(channels, channels, frames);
                         });
    }

    std::string qualityHint() const {
        const Oversampling& effect = mEffect.oversampling();
        return effect.wish() == 1 ? "" : "; " + qualityText(effect);
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
    CompareSlots mSlots;                   // stay where the rate changes
    std::optional<ClockedPlayer> mSilence; // processed once the sound system has ended
};

// Plays until a user, a signal or the sound system ends it. Returns the exit status.
int playToTheEnd(const PlayOptions& options, LiveBackend& backend, LiveEffect& effect,
                 XConnection* connection) {
    Play playing(options, backend, effect, connection);
    try {
        backend.setLatency(effect.oversampling().latencyFrames());
        backend.start(effect.process());
        playing.announce();
        return playing.run();
    } catch (const SoundUnavailable& error) {
        throw WorkError(backend.description() + ": " + error.what());
    } catch (const Interrupted&) {
        // A signal is the normal end of live use.
        clearInterruption();
        return kExitSuccess;
    }
}

// Closes the sound system first, so that nothing is counted meanwhile.
void reportStatistics(StatisticsForm form, const BlockStatistics& blocks,
                      std::unique_ptr<LiveBackend> backend) {
    const LiveStatus& status = backend->status();
    const LiveStatistics statistics{blocks, status.blockFrames(), status.rateHz(), status.overruns()};
    backend.reset();
    if (form != StatisticsForm::kNone) {
        printOut(form == StatisticsForm::kJson ? jsonText(statisticsJson(statistics))
                                               : statisticsText(statistics));
    }
}

// Returns the exit status.
int play(const PlayOptions& options, const Settings& settings, XConnection* connection,
         const std::shared_ptr<Module>& module) {
    // Both outlive the sound system that processes with them.
    std::optional<LiveEffect> effect;
    BlockStatistics statistics;
    auto backend = openPlayBackend(options, statistics);
    effect.emplace(module, options.request.outputs, backend->status().rateHz(), options.quality);
    settings.applyTo(effect->instance());
    int status = kExitSuccess;
    try {
        status = playToTheEnd(options, *backend, *effect, connection);
    } catch (const WorkError&) {
        reportStatistics(options.statistics, statistics, std::move(backend));
        throw;
    }
    reportStatistics(options.statistics, statistics, std::move(backend));
    return status;
}

} // namespace

int runPlay(const CommandLine& line) {
    const PlayOptions options = playOptions(line);
    const auto connection = connectionFor(options);
    const Settings settings(line);
    checkFiles(options.window, settings);
    if (!options.isQuiet) {
        printWarnings(settings.warnings());
    }
    auto module = loadModule(line);
    const int status = play(options, settings, connection.get(), module);
    unloadModule(std::move(module));
    return status;
}

} // namespace varno
