#include "CommandLine/Console.h"

#include "CommandLine/CommandTable.h"
#include "CommandLine/Interruption.h"
#include "CommandLine/LibraryMessages.h"
#include "CommandLine/VisibleText.h"
#include "Files/Transfer.h"

#include <sys/ioctl.h>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace varno {
namespace {

constexpr std::size_t kUsualColumns = 80;

void printLine(const std::string& line) noexcept {
    drawOnTerminal(visibleLine(line) + '\n');
}

} // namespace

void occupyStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) < 0 && errno == EBADF) {
            // A new descriptor has the lowest free number. Open for the other direction, it fails in this
            // one.
            ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

void printOut(std::string_view text) {
    writeAll(STDOUT_FILENO, visibleText(text), "standard output", throwIfInterrupted);
}

void printErr(std::string_view text) noexcept {
    drawOnTerminal(visibleText(text));
}

void drawOnTerminal(std::string_view text) noexcept {
    while (!text.empty()) {
        const ssize_t written = ::write(standardError(), text.data(), text.size());
        if (written <= 0) {
            return;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

void printError(const std::string& message) noexcept {
    printLine(std::string(kProgramName) + ": " + message);
}

void printWarning(const std::string& message) noexcept {
    printLine(std::string(kProgramName) + ": warning: " + message);
}

void printWarnings(const std::vector<std::string>& messages) noexcept {
    for (const auto& message : messages) {
        printWarning(message);
    }
}

std::size_t terminalColumns(int descriptor) {
    winsize size{};
    return ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsualColumns;
}

std::string environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

bool isTerminal(int descriptor) {
    return ::isatty(descriptor) == 1;
}

} // namespace varno
