#ifndef VARNO_APPS_VARNO_COMMANDLINE_COMMANDLINE_H
#define VARNO_APPS_VARNO_COMMANDLINE_COMMANDLINE_H

#include "CommandLine/CommandError.h"
#include "CommandLine/CommandTable.h"
#include "Surround/Settings/NumberText.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace varno {

/// The options and arguments that a command was given. Only options of its table entry may be queried.
class CommandLine {
public:
    /// Reads the arguments of a command. After "--" everything is an argument; "-" always is one. The names
    /// of long options are not abbreviated, so that a later option cannot break a script. [main]
    /// @param words the arguments after the command's name
    /// @throws UsageError for an unknown option, a missing or unexpected value, a choice not offered, or two
    ///         options that exclude each other. checkArguments() checks the number of arguments.
    CommandLine(const CommandEntry& command, const std::vector<std::string>& words);

    /// @throws UsageError where there are more or fewer arguments than the command takes, or a choice not
    ///         offered
    void checkArguments() const;

    /// Whether the option was given. @param option name with its dashes
    bool has(std::string_view option) const { return !values(option).empty(); }

    /// The value of an option, of several the last; nothing where it was not given.
    std::optional<std::string> value(std::string_view option) const;

    /// The number that an option gives; nothing where the option was not given.
    /// @throws UsageError where it is none, or not one of those that the option's entry states
    template<class Number>
    std::optional<Number> number(std::string_view option) const;

    /// Every value of an option, in the order given.
    const std::vector<std::string>& values(std::string_view option) const;

    const std::vector<std::string>& arguments() const { return mArguments; }

    /// The command's name and all words after it, as they were given.
    const std::vector<std::string>& words() const { return mWords; }

private:
    void readWords(const std::vector<std::string>& words);
    void checkOption(const OptionEntry& option) const;

    const CommandEntry& mCommand;
    std::vector<std::string> mWords;
    std::map<std::string, std::vector<std::string>, std::less<>> mValues; ///< By option name.
    std::vector<std::string> mArguments;
};

template<class Number>
std::optional<Number> CommandLine::number(std::string_view option) const {
    const auto text = value(option);
    if (!text) {
        return std::nullopt;
    }
    const auto number = numberFromText<Number>(*text);
    const NumberRange& range = std::ranges::find(mCommand.options, option, &OptionEntry::name)->numbers;
    // A value that is not a number is neither.
    if (!number || !(*number >= range.least && *number <= range.most)) {
        throw UsageError("option " + std::string(option) + ": expected " +
                         (std::is_integral_v<Number> ? "a whole number from " : "a number from ") +
                         textFromNumber(range.least) + " to " + textFromNumber(range.most) + ", found " +
                         inQuotes(*text));
    }
    return number;
}

} // namespace varno

#endif
