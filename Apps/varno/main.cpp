#include "CommandLine/CommandError.h"
#include "CommandLine/Console.h"
#include "CommandLine/Interruption.h"
#include "Program.h"

#include <csignal>
#include <exception>

namespace {

int runAndReport(const std::vector<std::string>& words) {
    using namespace varno;
    try {
        return runProgram(words);
    } catch (const std::exception& error) {
        printError(error.what());
        return exitStatusOf(error);
    }
}

} // namespace

int main(int count, char** words) {
    varno::occupyStandardStreams();
    varno::catchInterruptions();
    const int status = runAndReport({words + 1, words + count});
    if (const int signal = varno::interruptedBySignal()) {
        // A program that ends by the same signal lets a shell detect that the user wants to stop: it ends its
        // loops too.
        std::signal(signal, SIG_DFL);
        std::raise(signal);
    }
    return status;
}
