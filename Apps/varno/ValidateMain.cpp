// varno-validate: the part of the program that checks plug-ins, which varno starts for its command validate.
// So varno itself needs none of the libraries that load plug-ins of other formats.
#include "CommandLine/CommandError.h"
#include "CommandLine/ProgramMain.h"
#include "Commands.h"
#include "Validate/ValidateRun.h"

namespace {

int runValidateProgram(const std::vector<std::string>& words) {
    using namespace varno;
    const CommandEntry command = validateCommand(validate::runValidate);
    if (words.empty() || words.front() != command.name) {
        throw UsageError("varno validate starts this program; expected that command");
    }
    return runCommand(command, {words.begin() + 1, words.end()});
}

} // namespace

int main(int count, char** words) {
    return varno::programMain(count, words, runValidateProgram);
}
