#ifndef VARNO_APPS_VARNO_PLAY_TERMINALSESSION_H
#define VARNO_APPS_VARNO_PLAY_TERMINALSESSION_H

#include "Host/Instance.h"
#include "Play/LiveEffect.h"
#include "Play/Terminal.h"
#include "Session/EventLoop.h"
#include "Session/LiveStatus.h"
#include "Session/SettingsKeeper.h"

#include <optional>
#include <string>

namespace varno {

/// Chooses one of an effect's parameters and changes it, or bypasses the effect. [main]
class ParameterDial {
public:
    /// Starts with the first parameter that is no master bypass. @param effect outlives this object and keeps
    /// its rate; has parameters
    explicit ParameterDial(LiveEffect& effect);

    /// Moves by this many parameters, wrapping at the ends and skipping the master bypass.
    void choose(int by);
    /// Changes the chosen parameter by this many of its steps, within its range.
    void turn(int steps);
    /// Sets it to its default.
    void reset();
    /// Whether it is bypassed, without clicks or by its own master bypass.
    bool isBypassed() const;
    /// Bypasses it without clicks; otherwise ends both bypasses, so that one key always brings the effect
    /// back.
    void toggleBypass();

    /// "Hot 0.0700": name and value.
    std::string text() const;

private:
    Instance& instance() const { return mEffect.instance(); }
    const ParameterInfo& chosen() const { return instance().parameters()[mChosen]; }
    const ParameterInfo* masterBypass() const;
    bool isMasterBypassed() const;
    void set(double normalized);

    LiveEffect& mEffect;
    std::size_t mChosen = 0;
};

/// A running effect without its editor: single keys and a line of meters where standard input is a terminal,
/// else it only waits. [main]
class TerminalSession {
public:
    /// @param effect, settings, watch outlive this object; the effect keeps its rate
    TerminalSession(LiveEffect& effect, SettingsKeeper& settings, const LiveWatch& watch);
    TerminalSession(const TerminalSession&) = delete;
    TerminalSession& operator=(const TerminalSession&) = delete;
    /// Clears the line and restores the terminal.
    ~TerminalSession();

    /// For further watches and timers meanwhile.
    EventLoop& loop() { return mLoop; }
    /// Runs until a key or the loop quits. @throws Interrupted at a signal
    void run();

private:
    void readKeys();
    void act(LiveAction action);
    void chooseNextQuality();
    void tick();
    void drawLine();
    void clearLine();

    LiveEffect& mEffect;
    SettingsKeeper& mSettings;
    const LiveWatch& mWatch;
    EventLoop mLoop;
    ParameterDial mDial;
    TerminalKeys mKeys;
    std::optional<TerminalMode> mMode; ///< Nothing: no keys.
    bool mHasLine;
    std::string mLine; ///< As last drawn.
};

} // namespace varno

#endif
