#include "CommandLine/Console.h"

#include "AudioFile/Transfer.h"
#include "CommandLine/CommandTable.h"
#include "CommandLine/Interruption.h"

#include <algorithm>
#include <cstdlib>
#include <unistd.h>

namespace varno {
namespace {

// File names may hold line ends; a message must not.
void printLine(std::string line) noexcept {
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    printErr(line + '\n');
}

} // namespace

void printOut(std::string_view text) {
    writeAll(STDOUT_FILENO, text, "standard output", throwIfInterrupted);
}

void printErr(std::string_view text) noexcept {
    while (!text.empty()) {
        const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
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

std::string environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

bool isTerminal(int descriptor) {
    return ::isatty(descriptor) == 1;
}

} // namespace varno
