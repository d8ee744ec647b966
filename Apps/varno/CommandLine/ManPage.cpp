#include "CommandLine/Help.h"
#include "CommandLine/TextLayout.h"

#include <string_view>

namespace varno {
namespace {

// Day on which the text of the page was last revised.
constexpr const char* kRevised = "2026-11-22";

// Words in which roff sees nothing but text.
std::string escaped(std::string_view text) {
    std::string result;
    for (const char letter : text) {
        switch (letter) {
        case '\\':
            result += "\\e";
            break;
        case '-':
            result += "\\-";
            break;
        case '\'':
            result += "\\(aq";
            break;
        case '"':
            result += "\\(dq";
            break;
        case '~':
            result += "\\(ti";
            break;
        case '^':
            result += "\\(ha";
            break;
        default:
            result += letter;
        }
    }
    return result;
}

// Text in lines of their own. A point at the start of a line would make it a request, so a character without
// width goes before it.
std::string textLines(std::string_view text) {
    std::string result;
    for (const auto& line : wrapText(escaped(text), kTextColumns)) {
        result.append(line.starts_with('.') ? "\\&" : "").append(line).append("\n");
    }
    return result;
}

std::string bold(std::string_view text) {
    return "\\fB" + escaped(text) + "\\fR";
}

std::string italic(std::string_view text) {
    return "\\fI" + escaped(text) + "\\fR";
}

std::string section(const std::string& title) {
    return ".SH " + title + '\n';
}

std::string entry(const std::string& term, std::string_view text) {
    return ".TP\n" + term + '\n' + textLines(text);
}

std::string optionEntryText(const OptionEntry& option) {
    std::string term;
    if (!option.shortName.empty()) {
        term += bold(option.shortName) + ", ";
    }
    term += bold(option.name);
    if (!option.value.empty()) {
        term += ' ' + italic(option.value);
    }
    return entry(term, optionText(option));
}

std::string paragraphs(std::span<const std::string_view> texts) {
    std::string result;
    for (const auto text : texts) {
        result.append(result.empty() ? "" : ".PP\n").append(textLines(text));
    }
    return result;
}

std::string synopsis(std::span<const CommandEntry> commands) {
    std::string text = section("SYNOPSIS");
    std::string separator;
    for (const auto& command : commands) {
        for (const auto form : command.usage) {
            text += separator + bold(std::string(kProgramName) + ' ' + std::string(command.name));
            text += (form.empty() ? "" : ' ' + escaped(form)) + '\n';
            separator = ".br\n";
        }
    }
    return text;
}

std::string commandManual(const CommandEntry& command) {
    std::string text = ".SS " + std::string(kProgramName) + ' ' + std::string(command.name) + '\n';
    text += paragraphs(command.description);
    for (const auto& argument : command.arguments) {
        text += entry(italic(argument.name), argument.help);
    }
    for (const auto& option : command.options) {
        text += optionEntryText(option);
    }
    return text;
}

std::string notes(const std::string& title, std::span<const NoteEntry> list) {
    std::string text = section(title);
    for (const auto& note : list) {
        text += entry(bold(note.term), note.help);
    }
    return text;
}

std::string examples(std::span<const CommandEntry> commands) {
    std::string text = section("EXAMPLES");
    for (const auto& command : commands) {
        for (const auto& example : command.examples) {
            text += entry(bold(example.line), example.help);
        }
    }
    return text;
}

} // namespace

std::string manPage(const ProgramEntry& program, const std::string& version) {
    const std::string name(kProgramName);
    std::string page = ".TH VARNO 1 " + std::string(kRevised) + " \"" + name + ' ' + version + "\"\n";
    page += section("NAME") + name + " \\- " + escaped(program.summary) + '\n';
    page += synopsis(program.commands);
    page += section("DESCRIPTION") + paragraphs(program.description);
    for (const auto& option : program.options) {
        page += optionEntryText(option);
    }
    page += section("COMMANDS");
    for (const auto& command : program.commands) {
        page += commandManual(command);
    }
    page += notes("EXIT STATUS", program.exitStatuses);
    page += notes("ENVIRONMENT", program.environment);
    return page + examples(program.commands);
}

} // namespace varno
