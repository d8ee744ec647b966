#include "Play/Terminal.h"

#include <algorithm>
#include <unistd.h>

namespace varno {
namespace {

struct KeyEntry {
    std::string_view sequence; // that the terminal sends
    LiveAction action;
    std::string_view help = {}; // "key: what it does"; empty for another way to an action
};

constexpr KeyEntry kKeys[] = {
    {"q", LiveAction::kQuit, "q              ends the program"},
    {"\x04", LiveAction::kQuit}, // Ctrl-D
    {"b", LiveAction::kBypass, "b              bypass without clicks, on and off"},
    {"x", LiveAction::kQuality, "x              quality 1x, 2x, 4x, 8x in turn"},
    {"\x1b[A", LiveAction::kPrevious, "up, down       choose a parameter (or k, j)"},
    {"\x1bOA", LiveAction::kPrevious},
    {"k", LiveAction::kPrevious},
    {"\x1b[B", LiveAction::kNext},
    {"\x1bOB", LiveAction::kNext},
    {"j", LiveAction::kNext},
    {"\x1b[D", LiveAction::kDown, "left, right    change it by a step (or -, +)"},
    {"\x1bOD", LiveAction::kDown},
    {"-", LiveAction::kDown},
    {"\x1b[C", LiveAction::kUp},
    {"\x1bOC", LiveAction::kUp},
    {"+", LiveAction::kUp},
    {"=", LiveAction::kUp}, // + without Shift
    {"\x1b[6~", LiveAction::kFarDown, "page down, up  change it by ten steps"},
    {"\x1b[5~", LiveAction::kFarUp},
    {"d", LiveAction::kDefault, "d              its default"},
    {"s", LiveAction::kSave, "s              save the settings as a state"},
    {"?", LiveAction::kHelp, "?              this help"},
    {"h", LiveAction::kHelp},
};

constexpr char kEscape = '\x1b';

// A sequence is "[" or "O", digits, and a letter or "~" at its end.
constexpr bool endsSequence(std::string_view bytes) {
    return bytes.size() > 2 && (bytes.back() >= '@' && bytes.back() <= '~');
}

// How many bytes the first key has; 0 where it is not there in full.
std::size_t firstKey(std::string_view bytes) {
    if (bytes.empty() || bytes.front() != kEscape) {
        return std::min<std::size_t>(bytes.size(), 1);
    }
    if (bytes.size() > 1 && bytes[1] != '[' && bytes[1] != 'O') {
        return 1; // Escape alone, then another key
    }
    for (std::size_t length = 3; length <= bytes.size(); ++length) {
        if (endsSequence(bytes.substr(0, length))) {
            return length;
        }
    }
    return 0;
}

constexpr cc_t kNoCharacter = _POSIX_VDISABLE;

} // namespace

std::optional<LiveAction> TerminalKeys::next() {
    while (const std::size_t length = firstKey(mPending)) {
        const std::string key = mPending.substr(0, length);
        mPending.erase(0, length);
        const auto found = std::ranges::find(kKeys, key, &KeyEntry::sequence);
        if (found != std::end(kKeys)) {
            return found->action;
        }
    }
    return std::nullopt;
}

std::string terminalKeysHelp() {
    std::string help;
    for (const auto& key : kKeys) {
        if (!key.help.empty()) {
            help.append(key.help).append("\n");
        }
    }
    return help;
}

bool takesKeys(int descriptor) {
    return ::isatty(descriptor) == 1 && ::tcgetpgrp(descriptor) == ::getpgrp();
}

TerminalMode::TerminalMode(int descriptor)
    : mDescriptor(descriptor) {
    ::tcgetattr(descriptor, &mBefore);
    termios mode = mBefore;
    mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    mode.c_cc[VMIN] = 1;
    mode.c_cc[VTIME] = 0;
    mode.c_cc[VSUSP] = kNoCharacter;
    mode.c_cc[VQUIT] = kNoCharacter;
    ::tcsetattr(descriptor, TCSANOW, &mode);
}

TerminalMode::~TerminalMode() {
    ::tcsetattr(mDescriptor, TCSANOW, &mBefore);
}

} // namespace varno
