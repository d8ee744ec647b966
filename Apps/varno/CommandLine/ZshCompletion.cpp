#include "CommandLine/CommandTable.h"
#include "CommandLine/Completion.h"

namespace varno {
namespace {

// The names come from the program that the line begins with.
constexpr const char* kZshSupport = R"zsh(#compdef varno

_varno_parameters() {
    local -a names=(${(f)"$($program params --ids 2>/dev/null)"})
    compadd -a names
}
_varno_settings() {
    local -a names=(${(f)"$($program params --ids 2>/dev/null)"})
    compset -P '*=' || compadd -S = -a names
}
_varno_presets() {
    local -a names=(${(f)"$($program presets --names 2>/dev/null)"})
    compadd -a names
    _files
}

_varno() {
    local program=$words[1]
    if ((CURRENT > 2)); then
        local command=$words[2]
        shift words
        ((CURRENT--))
    fi
    case $command in
)zsh";

constexpr const char* kZshEpilog = R"zsh(    esac
}

if [[ $funcstack[1] == _varno ]]; then
    _varno "$@"
else
    compdef _varno varno
fi
)zsh";

// What _arguments does for a value; a blank proposes nothing.
std::string action(ValueKind kind, std::string_view choices) {
    constexpr ValueActions kActions = {.files = "_files",
                                       .folders = "_files -/",
                                       .parameters = "_varno_parameters",
                                       .settings = "_varno_settings",
                                       .presets = "_varno_presets",
                                       .nothing = " "};
    return actionOf(kind, '(' + std::string(choices) + ')', kActions);
}

// Text within an argument of _arguments in single quotes: colons and brackets have a meaning there.
std::string quotedText(std::string_view text) {
    std::string quoted;
    for (const char character : text) {
        if (character == '\'') {
            quoted += R"('\'')";
            continue;
        }
        if (character == ':' || character == '[' || character == ']' || character == '\\') {
            quoted += '\\';
        }
        quoted += character;
    }
    return quoted;
}

// '--format=[Sample format.]:FORMAT:(pcm16 pcm24)', for each of its names.
std::string optionArguments(const OptionEntry& option) {
    std::string text;
    for (const auto name : {option.name, option.shortName}) {
        if (name.empty()) {
            continue;
        }
        const bool isLong = name.starts_with("--");
        text.append(" \\\n            '*").append(name);
        if (option.kind != ValueKind::kNone) {
            text.append(isLong ? "=" : "+");
        }
        text.append("[").append(quotedText(firstSentence(option.help))).append("]");
        if (option.kind != ValueKind::kNone) {
            text.append(":").append(quotedText(option.value)).append(":");
            text.append(action(option.kind, option.choices));
        }
        text.append("'");
    }
    return text;
}

std::string zshCaseOf(const CommandEntry& command) {
    std::string text = "    " + std::string(command.name) + ")\n        _arguments";
    for (const auto& option : command.options) {
        text += optionArguments(option);
    }
    if (!command.arguments.empty()) {
        const auto& argument = command.arguments.front();
        text.append(" \\\n            '*:").append(quotedText(argument.name)).append(":");
        text.append(action(argument.kind, argument.choices)).append("'");
    }
    return text + "\n        ;;\n";
}

std::string zshCommands(const ProgramEntry& program) {
    std::string text = "    '')\n        local -a commands=(";
    for (const auto& command : program.commands) {
        text.append("\n            '").append(quotedText(command.name)).append(":");
        text.append(quotedText(command.summary)).append("'");
    }
    text += ")\n        _describe command commands\n        local -a options=(";
    for (const auto& option : program.options) {
        text.append("\n            '").append(quotedText(option.name)).append(":");
        text.append(quotedText(firstSentence(option.help))).append("'");
    }
    return text + ")\n        _describe -o option options\n        ;;\n";
}

} // namespace

std::string zshCompletion(const ProgramEntry& program) {
    std::string script = kZshSupport + zshCommands(program);
    for (const auto& command : program.commands) {
        script += zshCaseOf(command);
    }
    return script + kZshEpilog;
}

} // namespace varno
