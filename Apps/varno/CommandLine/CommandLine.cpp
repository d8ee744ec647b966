#include "CommandLine/CommandLine.h"

#include "CommandLine/CommandError.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>

namespace varno {
namespace {

constexpr std::string_view kEndOfOptions = "--";

std::vector<std::string> splitWords(std::string_view words) {
    std::vector<std::string> result;
    while (!words.empty()) {
        const auto end = std::min(words.find(' '), words.size());
        result.emplace_back(words.substr(0, end));
        words.remove_prefix(std::min(end + 1, words.size()));
    }
    return result;
}

const OptionEntry* findOption(const CommandEntry& command, std::string_view name) {
    const auto found = std::ranges::find_if(command.options, [&](const OptionEntry& option) {
        return option.name == name || (!option.shortName.empty() && option.shortName == name);
    });
    return found == command.options.end() ? nullptr : &*found;
}

std::string needsValue(const OptionEntry& option) {
    return "option " + std::string(option.name) + " needs a value (" + std::string(option.value) + ")";
}

// "--option=" and "--switch=value": the parser would take the next word as the value, or any word as yes or
// no.
void checkAssignments(const CommandEntry& command, const std::vector<std::string>& words) {
    for (const auto& word : words) {
        if (word == kEndOfOptions) {
            return;
        }
        const auto equals = word.find('=');
        const auto* option =
            equals == std::string::npos ? nullptr : findOption(command, word.substr(0, equals));
        if (option == nullptr) {
            continue;
        }
        if (option->kind == ValueKind::kNone) {
            throw UsageError("option " + std::string(option->name) + " takes no value, found " +
                             inQuotes(word.substr(equals + 1)));
        }
        if (equals + 1 == word.size()) {
            throw UsageError(needsValue(*option));
        }
    }
}

void checkChoice(const std::string& what, std::string_view choices, const std::string& found) {
    const auto offered = splitWords(choices);
    if (std::ranges::find(offered, found) != offered.end()) {
        return;
    }
    std::string expected;
    for (std::size_t i = 0; i < offered.size(); ++i) {
        const std::string joint = i == 0 ? "" : i + 1 == offered.size() ? " or " : ", ";
        expected += joint + offered[i];
    }
    throw UsageError(what + ": expected " + expected + ", found " + inQuotes(found) +
                     suggestion(found, offered));
}

void addOption(CLI::App& app, const OptionEntry& entry, std::vector<std::string>& values) {
    std::string names(entry.name);
    if (!entry.shortName.empty()) {
        names += ',' + std::string(entry.shortName);
    }
    if (entry.kind == ValueKind::kNone) {
        app.add_flag_callback(names, [&values] { values.emplace_back(); });
    } else {
        app.add_option(names, values)->allow_extra_args(false)->expected(1);
        app.get_option(std::string(entry.name))->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    }
}

bool looksLikeOption(std::string_view word) {
    return word.size() > 1 && word.front() == '-';
}

[[noreturn]] void refuseOption(const CommandEntry& command, const std::string& word) {
    const auto name = word.substr(0, word.find('='));
    std::vector<std::string> known;
    for (const auto& option : command.options) {
        known.emplace_back(option.name);
    }
    throw UsageError("unknown option " + inQuotes(name) + " of " + std::string(command.name) +
                     suggestion(name, known));
}

} // namespace

CommandLine::CommandLine(const CommandEntry& command, const std::vector<std::string>& words)
    : mCommand(command) {
    checkAssignments(command, words);
    CLI::App app;
    app.set_help_flag();
    app.allow_extras();
    for (const auto& option : command.options) {
        addOption(app, option, mValues[std::string(option.name)]);
    }
    try {
        app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
    } catch (const CLI::ArgumentMismatch&) {
        // The parser takes any next word as the value, so only the last option can lack one.
        throw UsageError(needsValue(*findOption(command, words.back())));
    }
    takeArguments(app.remaining());
    for (const auto& option : command.options) {
        if (option.kind == ValueKind::kChoice) {
            for (const auto& value : values(option.name)) {
                checkChoice("option " + std::string(option.name), option.choices, value);
            }
        }
    }
}

void CommandLine::takeArguments(const std::vector<std::string>& remaining) {
    bool optionsEnded = false;
    for (const auto& word : remaining) {
        if (!optionsEnded && word == kEndOfOptions) {
            optionsEnded = true;
        } else if (!optionsEnded && looksLikeOption(word)) {
            refuseOption(mCommand, word);
        } else {
            mArguments.push_back(word);
        }
    }
}

void CommandLine::checkArguments() const {
    const auto count = static_cast<int>(mArguments.size());
    if (count < mCommand.leastArguments) {
        throw UsageError(std::string(mCommand.name) + " needs " +
                         std::string(mCommand.arguments[mArguments.size()].name) + ", found nothing");
    }
    if (mCommand.mostArguments != kAnyNumber && count > mCommand.mostArguments) {
        const auto& surplus = mArguments[static_cast<std::size_t>(mCommand.mostArguments)];
        throw UsageError("unexpected argument " + inQuotes(surplus) + " of " + std::string(mCommand.name));
    }
    for (std::size_t i = 0; i < mArguments.size() && i < mCommand.arguments.size(); ++i) {
        if (mCommand.arguments[i].kind == ValueKind::kChoice) {
            checkChoice(std::string(mCommand.arguments[i].name), mCommand.arguments[i].choices,
                        mArguments[i]);
        }
    }
}

std::optional<std::string> CommandLine::value(std::string_view option) const {
    const auto& all = values(option);
    return all.empty() ? std::nullopt : std::optional(all.back());
}

const std::vector<std::string>& CommandLine::values(std::string_view option) const {
    return mValues.find(option)->second;
}

} // namespace varno
