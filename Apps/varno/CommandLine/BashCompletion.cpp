#include "CommandLine/CommandTable.h"
#include "CommandLine/Completion.h"

namespace varno {
namespace {

constexpr const char* kSupport = R"bash(
_varno_words() { mapfile -t COMPREPLY < <(compgen -W "$1" -- "$cur"); }
_varno_files() { mapfile -t COMPREPLY < <(compgen -f -- "$cur"); compopt -o filenames 2>/dev/null; }
_varno_directories() { mapfile -t COMPREPLY < <(compgen -d -- "$cur"); compopt -o filenames 2>/dev/null; }
_varno_parameters() { _varno_words "$("$program" params --ids 2>/dev/null)"; }
_varno_presets() {
    mapfile -t COMPREPLY < <(compgen -W "$("$program" presets --names 2>/dev/null)" -- "$cur"; compgen -f -- "$cur")
    compopt -o filenames 2>/dev/null
}
_varno_settings() {
    mapfile -t COMPREPLY < <(compgen -S = -W "$("$program" params --ids 2>/dev/null)" -- "$cur")
    compopt -o nospace 2>/dev/null
}
)bash";

// Bash splits words at "=": "--format=pcm16" arrives as three words, and so does "Hot=0.5", for which there
// are no proposals.
constexpr const char* kProlog = R"bash(
_varno() {
    local program=$1 cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]} command=${COMP_WORDS[1]}
    COMPREPLY=()
    if [[ $cur == = || $prev == = ]]; then
        if [[ $cur == = ]]; then
            cur=
        else
            prev=${COMP_WORDS[COMP_CWORD-2]}
        fi
        [[ $prev == -* ]] || return
    fi
    if ((COMP_CWORD == 1)); then
        command=
    fi
    case $command in
)bash";

constexpr const char* kEpilog = R"bash(    esac
}
complete -F _varno varno
)bash";

// The shell command that completes a value.
std::string completer(ValueKind kind, std::string_view choices) {
    constexpr ValueActions kActions = {.files = "_varno_files",
                                       .folders = "_varno_directories",
                                       .parameters = "_varno_parameters",
                                       .settings = "_varno_settings",
                                       .presets = "_varno_presets",
                                       .nothing = ":"};
    return actionOf(kind, "_varno_words '" + std::string(choices) + '\'', kActions);
}

std::string optionWords(std::span<const OptionEntry> options) {
    std::string words;
    for (const auto& option : options) {
        words.append(words.empty() ? "" : " ").append(option.name);
    }
    return words;
}

std::string commandWords(const ProgramEntry& program) {
    std::string words;
    for (const auto& command : program.commands) {
        words.append(command.name).append(" ");
    }
    return words + optionWords(program.options);
}

// The pattern that matches an option's names.
std::string optionPattern(const OptionEntry& option) {
    std::string pattern(option.name);
    if (!option.shortName.empty()) {
        pattern.append("|").append(option.shortName);
    }
    return pattern;
}

std::string caseOf(const CommandEntry& command) {
    std::string text;
    text.append("    ").append(command.name).append(")\n        case $prev in\n");
    for (const auto& option : command.options) {
        if (option.kind != ValueKind::kNone) {
            text.append("        ").append(optionPattern(option)).append(") ");
            text.append(completer(option.kind, option.choices)).append("; return ;;\n");
        }
    }
    text.append("        esac\n        if [[ $cur == -* ]]; then\n            _varno_words '");
    text.append(optionWords(command.options)).append("'\n");
    if (!command.arguments.empty()) {
        const auto& argument = command.arguments.front();
        text.append("        else\n            ")
            .append(completer(argument.kind, argument.choices))
            .append("\n");
    }
    return text.append("        fi\n        ;;\n");
}

} // namespace

std::string bashCompletion(const ProgramEntry& program) {
    std::string script = "# Completion of " + std::string(kProgramName) + " for bash.\n" + kSupport + kProlog;
    script += "    '')\n        _varno_words '" + commandWords(program) + "'\n        ;;\n";
    for (const auto& command : program.commands) {
        script += caseOf(command);
    }
    return script + kEpilog;
}

} // namespace varno
