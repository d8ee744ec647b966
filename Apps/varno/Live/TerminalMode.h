#ifndef VARNO_APPS_VARNO_LIVE_TERMINALMODE_H
#define VARNO_APPS_VARNO_LIVE_TERMINALMODE_H

#include <cstddef>
#include <termios.h>

namespace varno {

/// Whether a person can press keys: the open file is a terminal, and the program is in its foreground.
bool takesKeys(int descriptor);

/// How many columns a terminal has; 80 where it does not say.
std::size_t terminalColumns(int descriptor);

/// While it lives, a terminal hands over each key as it is pressed and does not show it. Ctrl-C still
/// interrupts; Ctrl-Z and Ctrl-\ do nothing, so that the program neither stops with the sound system waiting
/// for it nor ends with the terminal left as it is now.
class TerminalMode {
public:
    /// @param descriptor of a terminal
    explicit TerminalMode(int descriptor);
    TerminalMode(const TerminalMode&) = delete;
    TerminalMode& operator=(const TerminalMode&) = delete;
    /// Puts the terminal back.
    ~TerminalMode();

private:
    int mDescriptor;
    termios mBefore{};
};

} // namespace varno

#endif
