#ifndef VARNO_APPS_VARNO_COMMANDS_NUMBEROPTION_H
#define VARNO_APPS_VARNO_COMMANDS_NUMBEROPTION_H

#include "CommandError.h"
#include "CommandLine.h"
#include "NumberText.h"
#include "Quotes.h"

#include <optional>
#include <sstream>
#include <type_traits>

namespace varno {

/// The number that an option gives; nothing where the option was not given.
/// @throws UsageError where it is none, or not from `least` to `most`
template<class Number>
std::optional<Number> numberOption(const CommandLine& line, std::string_view option, Number least,
                                   Number most) {
    const auto text = line.value(option);
    if (!text) {
        return std::nullopt;
    }
    const auto number = numberFromText<Number>(*text);
    // A value that is not a number is neither.
    if (!number || !(*number >= least && *number <= most)) {
        std::ostringstream message;
        message << "option " << option << ": expected "
                << (std::is_integral_v<Number> ? "a whole number from " : "a number from ") << least << " to "
                << most << ", found " << inQuotes(*text);
        throw UsageError(message.str());
    }
    return number;
}

} // namespace varno

#endif
