#ifndef VARNO_APPS_VARNO_COMMANDLINE_CONSOLE_H
#define VARNO_APPS_VARNO_COMMANDLINE_CONSOLE_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// Opens the null device in place of standard streams that are closed, so that no file of this program gets
/// their numbers. Reading and writing them fails, as before. To be called before anything else is opened.
void occupyStandardStreams();

/// Writes visibleText() to standard output. @throws FileError where that fails, for instance on a full
/// disk
void printOut(std::string_view text);

/// Writes visibleText() to standard error. A failure is ignored: there is nowhere to report it.
void printErr(std::string_view text) noexcept;

/// Writes text to standard error as it is, with the sequences that a terminal interprets.
void drawOnTerminal(std::string_view text) noexcept;

/// "varno: message" on standard error, as a visibleLine().
void printError(const std::string& message) noexcept;

/// "varno: warning: message" on standard error, as a visibleLine().
void printWarning(const std::string& message) noexcept;

/// Whether the open file is a terminal. @param descriptor for instance standardError()
bool isTerminal(int descriptor);

/// printWarning() of each.
void printWarnings(const std::vector<std::string>& messages) noexcept;

/// The columns of a terminal now; 80 where it does not report them.
std::size_t terminalColumns(int descriptor);

/// An environment variable; empty where it is not set.
std::string environmentVariable(const char* name);

/// Takes a terminal to the start of its line and clears it.
inline constexpr const char* kClearLine = "\r\033[K";

} // namespace varno

#endif
