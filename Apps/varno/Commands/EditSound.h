#ifndef VARNO_APPS_VARNO_COMMANDS_EDITSOUND_H
#define VARNO_APPS_VARNO_COMMANDS_EDITSOUND_H

#include "ClockedPlayer.h"
#include "EffectLoop.h"
#include "LiveBackend.h"
#include "LiveWatch.h"

#include <memory>
#include <optional>

namespace varno {

/// What an edited effect hears in a loop, and who hears the effect: a sound system, or nobody, by the clock.
/// [main]
class EditSound {
public:
    /// Plays from its making to its end. @param instance outlives this object, nothing else processes it
    /// @param backend with as many outputs and no inputs; null: nobody hears it
    /// @throws WorkError where the sound system refuses
    EditSound(Instance& instance, AudioLoop loop, std::unique_ptr<LiveBackend> backend);

    /// To be called some times a second: tells of overruns, and where the sound system has gone or changed
    /// its rate warns and goes on by the clock.
    void check();

private:
    void playByTheClock();
    void goOnUnheard(const std::string& reason);

    Instance& mInstance;
    EffectLoop mLoop;
    std::unique_ptr<LiveBackend> mBackend;
    std::optional<LiveWatch> mWatch;
    std::optional<ClockedPlayer> mPlayer;
};

} // namespace varno

#endif
