#include "CommandLine/CommandLine.h"

#include "CommandLine/CommandError.h"
#include "Surround/Settings/Suggestion.h"

#include <algorithm>
#include <getopt.h>

namespace varno {
namespace {

std::vector<std::string> splitWords(std::string_view words) {
    std::vector<std::string> result;
    while (!words.empty()) {
        const auto end = std::min(words.find(' '), words.size());
        result.emplace_back(words.substr(0, end));
        words.remove_prefix(std::min(end + 1, words.size()));
    }
    return result;
}

std::string needsValue(const OptionEntry& option) {
    return "option " + std::string(option.name) + " needs a value (" + std::string(option.value) + ")";
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

[[noreturn]] void refuseOption(const CommandEntry& command, std::string_view word) {
    const auto name = word.substr(0, word.find('='));
    std::vector<std::string> known;
    for (const auto& option : command.options) {
        known.emplace_back(option.name);
    }
    throw UsageError("unknown option " + inQuotes(name) + " of " + std::string(command.name) +
                     suggestion(name, known));
}

// What getopt_long() returns: one of its own codes, the letter of a short option, or kFirstLongOption and the
// place of a long option in the command's table.
constexpr int kEndOfWords = -1;
constexpr int kArgument = 1;
constexpr int kMissingValue = ':';
constexpr int kRefused = '?';
constexpr int kFirstLongOption = 256;

// The options of a command as getopt_long() takes them.
struct OptionNames {
    explicit OptionNames(const CommandEntry& command) {
        for (const auto& entry : command.options) {
            const bool isSwitch = entry.kind == ValueKind::kNone;
            const int code = kFirstLongOption + static_cast<int>(longNames.size());
            // Names are literals, which end with a zero.
            longNames.push_back(
                {entry.name.substr(2).data(), isSwitch ? no_argument : required_argument, nullptr, code});
            if (!entry.shortName.empty()) {
                shortNames.append(1, entry.shortName.back()).append(isSwitch ? "" : ":");
            }
        }
        longNames.push_back({});
    }

    // "-": arguments come in their place, as kArgument. ":": kMissingValue is returned.
    std::string shortNames = "-:";
    std::vector<option> longNames;
};

// The option of a code of getopt_long(); null for none.
const OptionEntry* optionOf(const CommandEntry& command, int code) {
    if (code >= kFirstLongOption) {
        return &command.options[static_cast<std::size_t>(code - kFirstLongOption)];
    }
    const auto isCode = [&](const OptionEntry& entry) {
        return !entry.shortName.empty() && entry.shortName.back() == code;
    };
    const auto found = std::ranges::find_if(command.options, isCode);
    return found == command.options.end() ? nullptr : &*found;
}

// getopt_long() takes the beginning of a long option's name for the whole of it.
bool isAbbreviated(const OptionEntry& entry, std::string_view word) {
    return word.starts_with("--") && word.substr(0, word.find('=')) != entry.name;
}

// The option that getopt_long() has read from this word. Its value, where it takes one, is in optarg.
const OptionEntry& readOption(const CommandEntry& command, int code, std::string_view word) {
    const bool isRefused = code == kRefused || code == kMissingValue;
    const auto* const entry = optionOf(command, isRefused ? optopt : code);
    if (entry == nullptr || isAbbreviated(*entry, word)) {
        refuseOption(command, word);
    }
    if (code == kRefused) {
        throw UsageError("option " + std::string(entry->name) + " takes no value, found " +
                         inQuotes(word.substr(word.find('=') + 1)));
    }
    const bool isCutOff = entry->kind != ValueKind::kNone && word == std::string(entry->name) + '=';
    if (code == kMissingValue || isCutOff) {
        throw UsageError(needsValue(*entry));
    }
    return *entry;
}

} // namespace

CommandLine::CommandLine(const CommandEntry& command, const std::vector<std::string>& words)
    : mCommand(command),
      mWords{std::string(command.name)} {
    mWords.insert(mWords.end(), words.begin(), words.end());
    for (const auto& entry : command.options) {
        mValues[std::string(entry.name)];
    }
    readWords(words);
    for (const auto& entry : command.options) {
        checkOption(entry);
    }
}

void CommandLine::readWords(const std::vector<std::string>& words) {
    const OptionNames names(mCommand);
    std::vector<std::string> texts{std::string(kProgramName)};
    texts.insert(texts.end(), words.begin(), words.end());
    std::vector<char*> pointers;
    for (auto& text : texts) {
        pointers.push_back(text.data());
    }
    const int count = static_cast<int>(pointers.size());
    pointers.push_back(nullptr);
    // getopt_long() keeps its state in variables of the process: this is called before any thread starts.
    opterr = 0; // no messages
    optind = 0; // from the beginning
    for (;;) {
        const std::string_view word = pointers[static_cast<std::size_t>(std::clamp(optind, 1, count - 1))];
        const int code =
            getopt_long(count, pointers.data(), names.shortNames.c_str(), names.longNames.data(), nullptr);
        if (code == kEndOfWords) {
            break;
        }
        if (code == kArgument) {
            mArguments.emplace_back(optarg);
            continue;
        }
        const auto& entry = readOption(mCommand, code, word);
        mValues.find(entry.name)->second.emplace_back(optarg == nullptr ? "" : optarg);
    }
    mArguments.insert(mArguments.end(), texts.begin() + optind, texts.end());
}

void CommandLine::checkOption(const OptionEntry& option) const {
    if (option.kind == ValueKind::kChoice) {
        for (const auto& value : values(option.name)) {
            checkChoice("option " + std::string(option.name), option.choices, value);
        }
    }
    if (!option.excludes.empty() && has(option.name) && has(option.excludes)) {
        throw UsageError("options " + std::string(option.name) + " and " + std::string(option.excludes) +
                         " exclude each other");
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
