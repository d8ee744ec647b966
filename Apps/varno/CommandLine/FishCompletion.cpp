#include "CommandLine/CommandTable.h"
#include "CommandLine/Completion.h"

namespace varno {
namespace {

constexpr const char* kFishSupport = R"fish(# Completion of varno for fish.
function __varno_program
    set -l words (commandline --tokenize --current-process --cut-at-cursor)
    echo $words[1]
end
function __varno_parameters
    eval (__varno_program) params --ids 2>/dev/null
end
function __varno_settings
    __varno_parameters | string replace --regex '$' '='
end
function __varno_presets
    eval (__varno_program) presets --names 2>/dev/null
end
complete --command varno --no-files
)fish";

std::string fishQuoted(std::string_view text) {
    std::string quoted = "'";
    for (const char character : text) {
        if (character == '\'' || character == '\\') {
            quoted += '\\';
        }
        quoted += character;
    }
    return quoted + "'";
}

// What follows "complete" for a value.
std::string fishValue(ValueKind kind, std::string_view choices) {
    constexpr ValueActions kActions = {.files = " --force-files",
                                       .folders = " --no-files --arguments '(__fish_complete_directories)'",
                                       .parameters = " --no-files --arguments '(__varno_parameters)'",
                                       .settings = " --no-files --arguments '(__varno_settings)'",
                                       .presets = " --force-files --arguments '(__varno_presets)'",
                                       .nothing = " --no-files"};
    return actionOf(kind, " --no-files --arguments " + fishQuoted(choices), kActions);
}

// Where a line of the script proposes something: with that command, or before any.
std::string fishLine(const std::string& condition, const std::string& rest) {
    return "complete --command varno --condition " + fishQuoted(condition) + rest + '\n';
}

std::string fishOption(const OptionEntry& option) {
    std::string text = " --long-option " + std::string(option.name.substr(2));
    if (!option.shortName.empty()) {
        text += " --short-option " + std::string(option.shortName.substr(1));
    }
    if (option.kind != ValueKind::kNone) {
        text += " --require-parameter" + fishValue(option.kind, option.choices);
    }
    return text + " --description " + fishQuoted(firstSentence(option.help));
}

std::string fishCommand(const CommandEntry& command) {
    const std::string condition = "__fish_seen_subcommand_from " + std::string(command.name);
    std::string text = fishLine("__fish_use_subcommand", " --arguments " + fishQuoted(command.name) +
                                                             " --description " + fishQuoted(command.summary));
    for (const auto& option : command.options) {
        text += fishLine(condition, fishOption(option));
    }
    if (!command.arguments.empty()) {
        const auto& argument = command.arguments.front();
        text += fishLine(condition, fishValue(argument.kind, argument.choices));
    }
    return text;
}

} // namespace

std::string fishCompletion(const ProgramEntry& program) {
    std::string script = kFishSupport;
    for (const auto& option : program.options) {
        script += fishLine("__fish_use_subcommand", fishOption(option));
    }
    for (const auto& command : program.commands) {
        script += fishCommand(command);
    }
    return script;
}

} // namespace varno
