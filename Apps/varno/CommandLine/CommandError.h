#ifndef VARNO_APPS_VARNO_COMMANDLINE_COMMANDERROR_H
#define VARNO_APPS_VARNO_COMMANDLINE_COMMANDERROR_H

#include "AudioFile/Error.h"

#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>

namespace varno {

/// Exit statuses of the program.
inline constexpr int kExitSuccess = 0;
inline constexpr int kExitWorkFailed = 1; ///< A file, its content, a device.
inline constexpr int kExitWrongUsage = 2; ///< An option, a parameter, a value.

/// A failure that ends a command. what() is the whole message: one line without a line end that names the
/// file, option or parameter, what was found and what was expected.
class CommandError : public std::runtime_error {
public:
    CommandError(const std::string& message, int exitStatus)
        : std::runtime_error(message),
          mExitStatus(exitStatus) {}

    int exitStatus() const { return mExitStatus; }

private:
    int mExitStatus;
};

/// Wrong usage: an option, a parameter or a value that the command does not offer.
class UsageError : public CommandError {
public:
    explicit UsageError(const std::string& message)
        : CommandError(message, kExitWrongUsage) {}
};

/// The work itself failed: a file, its content, a device.
class WorkError : public CommandError {
public:
    explicit WorkError(const std::string& message)
        : CommandError(message, kExitWorkFailed) {}
};

/// The exit status of a command that ends with this error.
inline int exitStatusOf(const std::exception& error) {
    if (const auto* ofCommand = dynamic_cast<const CommandError*>(&error)) {
        return ofCommand->exitStatus();
    }
    return dynamic_cast<const UnsupportedFormat*>(&error) != nullptr ? kExitWrongUsage : kExitWorkFailed;
}

/// What a user wrote, as messages show it: "text".
inline std::string inQuotes(std::string_view text) {
    return '"' + std::string(text) + '"';
}

} // namespace varno

#endif
