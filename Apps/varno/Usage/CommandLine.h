#ifndef VARNO_APPS_VARNO_USAGE_COMMANDLINE_H
#define VARNO_APPS_VARNO_USAGE_COMMANDLINE_H

#include "CommandTable.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// What a command was given. The options that may be asked for are those of its table entry.
class CommandLine {
public:
    /// Reads the arguments of a command. After "--" everything is an argument; "-" always is one.
    /// @param words what stands behind the command's name
    /// @throws UsageError for an unknown option, a missing or unexpected value, or a choice not offered.
    ///         Whether the number of arguments is right is told by checkArguments().
    CommandLine(const CommandEntry& command, const std::vector<std::string>& words);

    /// @throws UsageError where there are more or fewer arguments than the command takes, or a choice not
    ///         offered
    void checkArguments() const;

    /// Whether the option was given. @param option name with its dashes
    bool has(std::string_view option) const { return !values(option).empty(); }

    /// The value of an option, of several the last; nothing where it was not given.
    std::optional<std::string> value(std::string_view option) const;

    /// Every value of an option, in the order given.
    const std::vector<std::string>& values(std::string_view option) const;

    const std::vector<std::string>& arguments() const { return mArguments; }

private:
    void takeArguments(const std::vector<std::string>& remaining);

    const CommandEntry& mCommand;
    std::map<std::string, std::vector<std::string>, std::less<>> mValues; // by option name
    std::vector<std::string> mArguments;
};

/// The message for a word that is no command. @throws UsageError always
[[noreturn]] void refuseCommand(const std::string& word);

} // namespace varno

#endif
