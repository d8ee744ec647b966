#ifndef VARNO_APPS_VARNO_COMMANDS_CONSOLE_H
#define VARNO_APPS_VARNO_COMMANDS_CONSOLE_H

#include <string>
#include <string_view>

namespace varno {

/// Writes text to standard output. @throws AudioFileError where that fails, for instance on a full disk
void printOut(std::string_view text);

/// Writes text to standard error. Nobody could be told of a failure, so there is none.
void printErr(std::string_view text) noexcept;

/// "varno: message" on standard error, as one line.
void printError(const std::string& message) noexcept;

/// "varno: warning: message" on standard error, as one line.
void printWarning(const std::string& message) noexcept;

} // namespace varno

#endif
