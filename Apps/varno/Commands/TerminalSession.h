#ifndef VARNO_APPS_VARNO_COMMANDS_TERMINALSESSION_H
#define VARNO_APPS_VARNO_COMMANDS_TERMINALSESSION_H

#include "EventLoop.h"
#include "Host/Instance.h"
#include "LiveWatch.h"
#include "ParameterDial.h"
#include "SettingsKeeper.h"
#include "TerminalKeys.h"
#include "TerminalMode.h"

#include <optional>
#include <string>

namespace varno {

/// A running effect without its editor: single keys and a line of meters where standard input is a terminal,
/// else nothing but waiting. [main]
class TerminalSession {
public:
    /// @param instance, settings, watch outlive this object
    TerminalSession(Instance& instance, SettingsKeeper& settings, const LiveWatch& watch);
    TerminalSession(const TerminalSession&) = delete;
    TerminalSession& operator=(const TerminalSession&) = delete;
    /// Clears the line and puts the terminal back.
    ~TerminalSession();

    /// For what else is to be done meanwhile.
    EventLoop& loop() { return mLoop; }
    /// Goes on until a key or the loop quits. @throws Interrupted at a signal
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
    std::optional<TerminalMode> mMode; // nothing: no keys
    bool mHasLine;
    std::string mLine; // as it stands there now
};

} // namespace varno

#endif
