#ifndef VARNO_APPS_VARNO_COMMANDLINE_CONSOLE_H
#define VARNO_APPS_VARNO_COMMANDLINE_CONSOLE_H

#include <string>
#include <string_view>

namespace varno {

/// Writes text to standard output. @throws AudioFileError where that fails, for instance on a full disk
void printOut(std::string_view text);

/// Writes text to standard error. A failure is ignored: there is nowhere to report it.
void printErr(std::string_view text) noexcept;

/// "varno: message" on standard error, as one line.
void printError(const std::string& message) noexcept;

/// "varno: warning: message" on standard error, as one line.
void printWarning(const std::string& message) noexcept;

/// Whether the open file is a terminal. @param descriptor for instance STDERR_FILENO
bool isTerminal(int descriptor);

/// An environment variable; empty where it is not set.
std::string environmentVariable(const char* name);

/// Takes a terminal to the start of its line and clears it.
inline constexpr const char* kClearLine = "\r\033[K";

} // namespace varno

#endif
