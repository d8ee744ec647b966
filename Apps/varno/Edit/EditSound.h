#ifndef VARNO_APPS_VARNO_EDIT_EDITSOUND_H
#define VARNO_APPS_VARNO_EDIT_EDITSOUND_H

#include "Session/LiveBackend.h"
#include "Session/LiveStatus.h"
#include "Session/LoopPlayer.h"

#include <memory>
#include <optional>
#include <string>

namespace varno {

/// Plays a loop through an edited effect: to a sound system, or without output by the clock. [main]
class EditSound {
public:
    /// Plays from construction to destruction. @param effect outlives this object, nothing else processes
    /// it
    /// @param backend with as many outputs and no inputs; null: no sound output
    /// @throws WorkError where the sound system refuses
    EditSound(Oversampling& effect, AudioLoop loop, std::unique_ptr<LiveBackend> backend);
    EditSound(const EditSound&) = delete;
    EditSound& operator=(const EditSound&) = delete;
    /// Prints how many overruns there were, if more than it has warned of.
    ~EditSound();

    /// To be called every kSoundCheckPeriod: reports the latency, which changes with the quality; prints a
    /// warning of the first overrun; where the sound system has ended or changed its rate, prints one and
    /// continues by the clock.
    /// @return what there is to show: the overruns so far, or that warning; nothing where nothing is new
    std::optional<std::string> check();

    /// What processes; its factor may be changed meanwhile.
    Oversampling& effect() { return mEffect; }
    /// The bypass without clicks; the effect's own master bypass is a parameter.
    void setBypassed(bool isBypassed) { mLoop.bypass().set(isBypassed); }
    bool isBypassed() const { return mLoop.bypass().isBypassed(); }

private:
    void playByTheClock();
    void printLaterOverruns() const;
    std::string continueWithoutOutput(const std::string& reason);

    Oversampling& mEffect;
    EffectLoop mLoop;
    std::unique_ptr<LiveBackend> mBackend;
    std::optional<LiveWatch> mWatch;
    std::optional<ClockedPlayer> mPlayer;
};

} // namespace varno

#endif
