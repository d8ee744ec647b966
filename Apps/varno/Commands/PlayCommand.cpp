#include "CommandError.h"
#include "Commands.h"
#include "Console.h"
#include "EditSession.h"
#include "Interruption.h"
#include "LiveEffect.h"
#include "LiveWatch.h"
#include "ModuleLoading.h"
#include "NumberText.h"
#include "PlayOptions.h"
#include "Settings.h"
#include "SettingsKeeping.h"
#include "TerminalSession.h"
#include "Window/XConnection.h"

#include <cstdlib>

namespace varno {
namespace {

// The pace at which the sound system is looked after.
constexpr std::chrono::milliseconds kSoundCheck(100);

bool hasDisplay() {
    const char* display = std::getenv("DISPLAY");
    return display != nullptr && *display != '\0';
}

// Where nobody has asked for the editor, a display that does not answer is no reason to stay silent.
std::unique_ptr<XConnection> connectionFor(const PlayOptions& options) {
    if (!options.editor.value_or(hasDisplay())) {
        return nullptr;
    }
    const char* display = std::getenv("DISPLAY");
    try {
        return std::make_unique<XConnection>(display == nullptr ? "" : display);
    } catch (const WindowError& error) {
        if (options.editor) {
            throw;
        }
        printWarning(std::string("without the editor: ") + error.what());
        return nullptr;
    }
}

std::unique_ptr<LiveBackend> backendFor(const PlayOptions& options) {
    try {
        return openBackend(options.backend, options.request);
    } catch (const SoundUnavailable& error) {
        throw WorkError(error.what());
    }
}

// The effect in live use, as long as its session lasts.
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

    // Goes on over changes of the rate, each with a session of its own.
    void run() {
        runAndTellUnsaved(mSettings, mOptions.window.command, [this] {
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
            printErr("playing: " + mBackend.description() + ", " + textFromNumber(status.rateHz()) + " Hz, " +
                     std::to_string(status.blockFrames()) + " frames" + endHint() + '\n');
        }
    }

private:
    void runSession() {
        if (mConnection != nullptr) {
            EditSession session(mOptions.window, *mConnection, mEffect.instance(), mSettings);
            watchAndRun(session);
        } else {
            TerminalSession session(mEffect.instance(), mSettings, mWatch);
            watchAndRun(session);
        }
    }

    template<class Session>
    void watchAndRun(Session& session) {
        session.loop().startTimer(kSoundCheck, this, [&] {
            mBackend.check();
            mWatch.requireRunning();
            tellOverruns();
            if (mWatch.hasNewRate()) {
                session.loop().quit();
            }
        });
        session.run();
    }

    // A terminal's line shows them anyway.
    void tellOverruns() {
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
    const auto backend = backendFor(options);
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
        // Live use has no other end than being told to end.
        clearInterruption();
    }
}

} // namespace

int runPlay(const CommandLine& line) {
    const PlayOptions options = playOptions(line);
    const auto connection = connectionFor(options);
    const Settings settings(line);
    auto module = loadModule(line);
    play(options, settings, connection.get(), module);
    unloadModule(std::move(module));
    return kExitSuccess;
}

} // namespace varno
