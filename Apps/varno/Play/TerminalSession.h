#ifndef VARNO_APPS_VARNO_PLAY_TERMINALSESSION_H
#define VARNO_APPS_VARNO_PLAY_TERMINALSESSION_H

#include "Host/Instance.h"
#include "Play/Terminal.h"
#include "Session/EventLoop.h"
#include "Session/LiveStatus.h"
#include "Session/SettingsKeeper.h"

#include <optional>
#include <string>

namespace varno {

/// Chooses one of an instance's parameters and changes it. [main]
class ParameterDial {
public:
    /// Starts with the first parameter that is no master bypass. @param instance outlives this object; has
    /// parameters
    explicit ParameterDial(Instance& instance);

    /// Moves by this many parameters, wrapping at the ends and skipping the master bypass.
    void choose(int by);
    /// Changes the chosen parameter by this many of its steps, within its range.
    void turn(int steps);
    /// Sets it to its default.
    void reset();
    /// Toggles the master bypass. Does nothing where the effect has none.
    void toggleBypass();

    bool isBypassed() const;
    /// "Hot 0.0700": name and value.
    std::string text() const;

private:
    const ParameterInfo& chosen() const { return mInstance.parameters()[mChosen]; }
    const ParameterInfo* bypass() const;
    void set(double normalized);

    Instance& mInstance;
    std::size_t mChosen = 0;
};

/// A running effect without its editor: single keys and a line of meters where standard input is a terminal,
/// else it only waits. [main]
class TerminalSession {
public:
    /// @param instance, settings, watch outlive this object
    TerminalSession(Instance& instance, SettingsKeeper& settings, const LiveWatch& watch);
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
    void tick();
    void drawLine();
    void clearLine();

    Instance& mInstance;
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
