#include "CommandLine/ProgramMain.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/CommandLine.h"
#include "CommandLine/Console.h"
#include "CommandLine/Help.h"
#include "CommandLine/Interruption.h"

#include <csignal>
#include <exception>

namespace varno {
namespace {

int runAndReport(RunProgram run, const std::vector<std::string>& words) {
    try {
        return run(words);
    } catch (const std::exception& error) {
        printError(error.what());
        return exitStatusOf(error);
    }
}

} // namespace

int programMain(int count, char** words, RunProgram run) {
    occupyStandardStreams();
    catchInterruptions();
    const int status = runAndReport(run, {words + 1, words + count});
    if (const int signal = interruptedBySignal()) {
        // A program that ends by the same signal lets a shell detect that the user wants to stop: it ends its
        // loops too.
        std::signal(signal, SIG_DFL);
        std::raise(signal);
    }
    return status;
}

int runCommand(const CommandEntry& entry, const std::vector<std::string>& words) {
    const CommandLine line(entry, words);
    if (line.has("--help")) {
        printOut(commandHelp(entry));
        return kExitSuccess;
    }
    line.checkArguments();
    return entry.run(line);
}

} // namespace varno
