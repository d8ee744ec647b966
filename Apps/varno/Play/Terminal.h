#ifndef VARNO_APPS_VARNO_PLAY_TERMINAL_H
#define VARNO_APPS_VARNO_PLAY_TERMINAL_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <termios.h>

namespace varno {

/// What a key in the terminal of a live effect does.
enum class LiveAction {
    kQuit,
    kBypass,
    kQuality,
    kPrevious,
    kNext,
    kDown,
    kUp,
    kFarDown,
    kFarUp,
    kDefault,
    kSave,
    kHelp
};

/// Splits the input of a terminal into keys. A key may arrive in parts, so one object receives all input.
class TerminalKeys {
public:
    /// Adds what has arrived.
    void add(std::string_view bytes) { mPending += bytes; }
    /// The action of the next key that has one; nothing until more arrives. A lone Escape counts as the start
    /// of a longer sequence.
    std::optional<LiveAction> next();

private:
    std::string mPending;
};

/// What the keys do, one line per key.
std::string terminalKeysHelp();

/// Whether keys can be read: the open file is a terminal, and the program is in its foreground.
bool takesKeys(int descriptor);

/// While it exists, a terminal passes on each key as it is pressed and does not show it. Ctrl-C still
/// interrupts; Ctrl-Z and Ctrl-\ do nothing, so that the program neither stops with the sound system waiting
/// for it nor ends with the terminal left as it is now.
class TerminalMode {
public:
    /// @param descriptor of a terminal
    explicit TerminalMode(int descriptor);
    TerminalMode(const TerminalMode&) = delete;
    TerminalMode& operator=(const TerminalMode&) = delete;
    /// Restores the terminal.
    ~TerminalMode();

private:
    int mDescriptor;
    termios mBefore{};
};

} // namespace varno

#endif
