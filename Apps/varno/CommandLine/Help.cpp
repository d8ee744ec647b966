#include "CommandLine/Help.h"

#include "CommandLine/TextLayout.h"
#include "Surround/Settings/NumberText.h"

#include <algorithm>

namespace varno {
namespace {

constexpr int kOptionTextColumn = 25;
constexpr int kTermTextColumn = 16;
constexpr int kExampleIndent = 2;
constexpr int kExampleTextIndent = 6;

std::string heading(std::string_view text) {
    return '\n' + std::string(text) + ":\n";
}

std::string usageSection(const std::vector<std::string>& lines) {
    std::string result;
    for (const auto& line : lines) {
        result += (result.empty() ? "Usage: " : "       ") + line + '\n';
    }
    return result;
}

std::string description(std::span<const std::string_view> paragraphs) {
    std::string result;
    for (const auto text : paragraphs) {
        result += '\n' + paragraph(text);
    }
    return result;
}

std::string argumentSection(std::span<const ArgumentEntry> arguments) {
    if (arguments.empty()) {
        return {};
    }
    std::string result = heading("Arguments");
    for (const auto& argument : arguments) {
        result += termAndText(argument.name, argument.help, kOptionTextColumn);
    }
    return result;
}

// In the order in which they first appear.
std::vector<std::string_view> optionGroups(std::span<const OptionEntry> options) {
    std::vector<std::string_view> groups;
    for (const auto& option : options) {
        if (std::ranges::find(groups, option.group) == groups.end()) {
            groups.push_back(option.group);
        }
    }
    return groups;
}

std::string optionSections(std::span<const OptionEntry> options) {
    std::string result;
    for (const auto group : optionGroups(options)) {
        result += heading(group);
        for (const auto& option : options) {
            if (option.group == group) {
                result += termAndText(optionTerm(option), optionText(option), kOptionTextColumn);
            }
        }
    }
    return result;
}

std::string exampleSection(std::span<const ExampleEntry> examples) {
    std::string result = heading("Examples");
    for (const auto& example : examples) {
        result += std::string(kExampleIndent, ' ') + std::string(example.line) + '\n';
        result += paragraph(example.help, kExampleTextIndent);
    }
    return result;
}

std::string noteSection(std::string_view title, std::span<const NoteEntry> notes) {
    std::string result = heading(title);
    for (const auto& note : notes) {
        result += termAndText(note.term, note.help, kTermTextColumn);
    }
    return result;
}

std::string commandSection(std::span<const CommandEntry> commands) {
    std::string result = heading("Commands");
    for (const auto& command : commands) {
        result += termAndText(command.name, std::string(command.summary) + '.', kTermTextColumn);
    }
    return result;
}

} // namespace

std::vector<std::string> usageLines(const CommandEntry& command) {
    std::vector<std::string> lines;
    for (const auto form : command.usage) {
        std::string line = std::string(kProgramName) + ' ' + std::string(command.name);
        if (!form.empty()) {
            line += ' ' + std::string(form);
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

std::string optionTerm(const OptionEntry& option) {
    std::string term;
    if (!option.shortName.empty()) {
        term += std::string(option.shortName) + ", ";
    }
    term += option.name;
    if (!option.value.empty()) {
        term += ' ' + std::string(option.value);
    }
    return term;
}

std::string optionText(const OptionEntry& option) {
    std::string text(option.help);
    if (option.kind == ValueKind::kNumber) {
        const NumberRange& numbers = option.numbers;
        text += " From " + textFromNumber(numbers.least) + " to " + textFromNumber(numbers.most);
        text += numbers.usual ? "; default: " + textFromNumber(*numbers.usual) + '.' : ".";
    }
    return text;
}

std::string programHelp(const ProgramEntry& program) {
    const std::string name(kProgramName);
    return usageSection({name + " COMMAND [OPTIONS] [ARGUMENTS]", name + " COMMAND --help"}) +
           description(program.description) + commandSection(program.commands) +
           optionSections(program.options) + noteSection("Exit status", program.exitStatuses) +
           noteSection("Environment", program.environment);
}

std::string commandHelp(const CommandEntry& command) {
    return usageSection(usageLines(command)) + '\n' + std::string(command.summary) + ".\n" +
           description(command.description) + argumentSection(command.arguments) +
           optionSections(command.options) + exampleSection(command.examples);
}

} // namespace varno
