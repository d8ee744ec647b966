#include "Program.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/CommandLine.h"
#include "CommandLine/Completion.h"
#include "CommandLine/Console.h"
#include "CommandLine/Help.h"
#include "CommandLine/ProgramMain.h"
#include "Commands.h"
#include "OtherPrograms.h"
#include "Settings/ModuleLoading.h"
#include "Surround/Settings/Suggestion.h"

#include <algorithm>

namespace varno {
namespace {

constexpr std::string_view kCompletionUsage[] = {"SHELL"};
constexpr std::string_view kCompletionDescription[] = {
    "Prints a script that completes commands, options, values, files and parameters in a shell."};
constexpr ArgumentEntry kCompletionArguments[] = {{.name = "SHELL",
                                                   .kind = ValueKind::kChoice,
                                                   .choices = "bash zsh fish",
                                                   .help = "The shell: bash, zsh or fish."}};
constexpr OptionEntry kHelpOnly[] = {kHelpOption};
constexpr ExampleEntry kCompletionExamples[] = {
    {"source <(varno completion bash)", "For the running shell."},
    {"varno completion bash > ~/.local/share/bash-completion/completions/varno", "For every bash to come."},
    {"varno completion zsh > ~/.zfunc/_varno", "For zsh, with ~/.zfunc in fpath."},
    {"varno completion fish > ~/.config/fish/completions/varno.fish", "For fish."},
};

constexpr std::string_view kManUsage[] = {""};
constexpr std::string_view kManDescription[] = {"Prints the manual page in roff."};
constexpr ExampleEntry kManExamples[] = {{"varno man | man -l -", "Read it."}};

constexpr OptionEntry kProgramOptions[] = {
    kHelpOption,
    {.name = "--version", .group = "General", .help = "Print the version and exit."},
};

constexpr std::string_view kProgramDescription[] = {
    "Varno-S is a saturation and overdrive effect with a dynamics section. This program loads it as a host "
    "does, renders audio files through it, plays live through it and opens its editor."};

constexpr NoteEntry kExitStatusNotes[] = {
    {"0", "Everything was done."},
    {"1", "The work failed: a file, its content, a device. Standard error states the reason in one line."},
    {"2", "Wrong usage: an option, a parameter, a value."},
    {"130, 143",
     "Ended by SIGINT or SIGTERM (as a shell reports it), with unfinished outputs removed. (varno play "
     "ends with 0 then, since a signal is its usual end.)"},
};

constexpr NoteEntry kEnvironmentNotes[] = {
    {kModuleVariable, "The bundle to use where --module is not given."},
    {"DISPLAY", "The X server on which the editor's window opens."},
    {"JACK_DEFAULT_SERVER", "The name of the JACK server."},
    {"GDK_SCALE", "The scale of the editor, instead of the desktop's own."}};

int runCompletion(const CommandLine& line) {
    const std::string& shell = line.arguments().front();
    printOut(shell == "bash"  ? bashCompletion(program())
             : shell == "zsh" ? zshCompletion(program())
                              : fishCompletion(program()));
    return kExitSuccess;
}

CommandEntry completionCommand() {
    return {.name = "completion",
            .summary = "Print the completion script of a shell",
            .usage = kCompletionUsage,
            .description = kCompletionDescription,
            .arguments = kCompletionArguments,
            .leastArguments = 1,
            .mostArguments = 1,
            .options = kHelpOnly,
            .examples = kCompletionExamples,
            .run = runCompletion};
}

int runMan(const CommandLine&) {
    printOut(manPage(program(), VARNO_VERSION));
    return kExitSuccess;
}

CommandEntry manCommand() {
    return {.name = "man",
            .summary = "Print the manual page",
            .usage = kManUsage,
            .description = kManDescription,
            .options = kHelpOnly,
            .examples = kManExamples,
            .run = runMan};
}

[[noreturn]] void refuseWord(const std::string& word) {
    if (word.starts_with('-')) {
        throw UsageError("unknown option " + inQuotes(word) + " (see varno --help)");
    }
    std::vector<std::string> known;
    for (const auto& command : program().commands) {
        known.emplace_back(command.name);
    }
    throw UsageError("unknown command " + inQuotes(word) + suggestion(word, known) + " (see varno --help)");
}

} // namespace

const ProgramEntry& program() {
    static const CommandEntry commands[] = {renderCommand(),
                                            editCommand(startWindowProgram),
                                            playCommand(startWindowProgram),
                                            describeCommand(),
                                            paramsCommand(),
                                            presetsCommand(),
                                            measureCommand(),
                                            plotCommand(),
                                            validateCommand(startValidateProgram),
                                            doctorCommand(),
                                            completionCommand(),
                                            manCommand()};
    static const ProgramEntry entry = {.summary = "saturation and dynamics for audio files and live sound",
                                       .description = kProgramDescription,
                                       .options = kProgramOptions,
                                       .commands = commands,
                                       .exitStatuses = kExitStatusNotes,
                                       .environment = kEnvironmentNotes};
    return entry;
}

const CommandEntry* findCommand(std::string_view name) {
    const auto commands = program().commands;
    const auto found = std::ranges::find(commands, name, &CommandEntry::name);
    return found == commands.end() ? nullptr : &*found;
}

int runProgram(const std::vector<std::string>& words) {
    if (words.empty()) {
        throw UsageError("no command found; expected one of those that varno --help lists");
    }
    const std::string& word = words.front();
    if (word == "--help" || word == "-h") {
        printOut(programHelp(program()));
    } else if (word == "--version") {
        printOut(std::string(kProgramName) + ' ' + VARNO_VERSION + '\n');
    } else if (const auto* entry = findCommand(word)) {
        return runCommand(*entry, {words.begin() + 1, words.end()});
    } else {
        refuseWord(word);
    }
    return kExitSuccess;
}

} // namespace varno
