#include "CommandLine/ProgramMain.h"
#include "Program.h"

int main(int count, char** words) {
    return varno::programMain(count, words, varno::runProgram);
}
