#ifndef VARNO_APPS_VARNO_LIVE_TERMINALKEYS_H
#define VARNO_APPS_VARNO_LIVE_TERMINALKEYS_H

#include <optional>
#include <string>
#include <string_view>

namespace varno {

/// What a key in the terminal of a live effect does.
enum class LiveAction {
    kQuit,
    kBypass,
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

/// Takes what a terminal sends for single keys apart. Keys arrive in parts now and then, so one reader sees
/// all.
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

} // namespace varno

#endif
