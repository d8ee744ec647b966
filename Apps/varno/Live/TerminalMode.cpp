#include "TerminalMode.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace varno {
namespace {

constexpr std::size_t kUsualColumns = 80;
constexpr cc_t kNoCharacter = _POSIX_VDISABLE;

} // namespace

bool takesKeys(int descriptor) {
    return ::isatty(descriptor) == 1 && ::tcgetpgrp(descriptor) == ::getpgrp();
}

std::size_t terminalColumns(int descriptor) {
    winsize size{};
    return ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsualColumns;
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
