// varno-window: the part of the program that opens windows, which varno starts for its commands edit and
// play, and asks for doctor. So varno itself needs no library of X.
#include "CommandLine/CommandError.h"
#include "CommandLine/ProgramMain.h"
#include "Commands.h"
#include "WindowCommands.h"

#include <algorithm>

namespace {

int runWindowProgram(const std::vector<std::string>& words) {
    using namespace varno;
    CommandEntry doctor = doctorCommand();
    doctor.run = answerDoctor;
    const CommandEntry commands[] = {editCommand(runEdit), playCommand(runPlay), doctor};
    const auto* const end = std::end(commands);
    const auto* const found =
        words.empty() ? end : std::ranges::find(commands, words.front(), &CommandEntry::name);
    if (found == end) {
        throw UsageError("varno edit, play and doctor start this program; expected one of these commands");
    }
    return runCommand(*found, {words.begin() + 1, words.end()});
}

} // namespace

int main(int count, char** words) {
    return varno::programMain(count, words, runWindowProgram);
}
