#include "Commands.h"

#include "BashCompletion.h"
#include "CommandError.h"
#include "Console.h"
#include "HelpText.h"
#include "ManPage.h"
#include "Quotes.h"

namespace varno {
namespace {

using CommandFunction = int (*)(const CommandLine&);

struct Command {
    std::string_view name;
    CommandFunction run;
};

constexpr Command kCommands[] = {
    {"render", runRender},         {"edit", runEdit},     {"play", runPlay},
    {"describe", runDescribe},     {"params", runParams}, {"presets", runPresets},
    {"completion", runCompletion}, {"man", runMan}};

int runCommand(const CommandEntry& entry, const std::vector<std::string>& words) {
    const CommandLine line(entry, words);
    if (line.has("--help")) {
        printOut(commandHelp(entry));
        return kExitSuccess;
    }
    line.checkArguments();
    for (const auto& command : kCommands) {
        if (command.name == entry.name) {
            return command.run(line);
        }
    }
    throw std::logic_error("a command of the table has no function");
}

} // namespace

int runProgram(const std::vector<std::string>& words) {
    if (words.empty()) {
        throw UsageError("no command found; expected one of those that varno --help lists");
    }
    const std::string& word = words.front();
    if (word == "--help" || word == "-h") {
        printOut(programHelp());
    } else if (word == "--version") {
        printOut(std::string(kProgramName) + ' ' + VARNO_VERSION + '\n');
    } else if (const auto* entry = findCommand(word)) {
        return runCommand(*entry, {words.begin() + 1, words.end()});
    } else if (word.starts_with('-')) {
        throw UsageError("unknown option " + inQuotes(word) + " (see varno --help)");
    } else {
        refuseCommand(word);
    }
    return kExitSuccess;
}

int runCompletion(const CommandLine&) {
    printOut(bashCompletion());
    return kExitSuccess;
}

int runMan(const CommandLine&) {
    printOut(manPage(VARNO_VERSION));
    return kExitSuccess;
}

} // namespace varno
