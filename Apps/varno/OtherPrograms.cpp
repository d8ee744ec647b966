#include "OtherPrograms.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Interruption.h"
#include "Settings/InstalledFiles.h"

#include <cerrno>
#include <system_error>
#include <unistd.h>

namespace varno {
namespace {

[[noreturn]] void startProgram(const std::string& name, const CommandLine& line) {
    const auto folder = programFolder();
    const auto program = installedFile(folder, name);
    if (!program) {
        throw WorkError(name + ": not found beside the program in " + folder.string() +
                        "; expected it where the program was built or installed");
    }
    std::vector<std::string> words = line.words();
    words.insert(words.begin(), *program);
    std::vector<char*> pointers;
    for (auto& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    letInterruptionsEnd();
    ::execv(program->c_str(), pointers.data());
    throw WorkError(program->string() + ": cannot be started: " + std::generic_category().message(errno));
}

} // namespace

int startWindowProgram(const CommandLine& line) {
    startProgram("varno-window", line);
}

int startValidateProgram(const CommandLine& line) {
    startProgram("varno-validate", line);
}

} // namespace varno
