#include "Benchmarks/InstructionSet.h"

#include "Alg/DemoGain_Routine.h"

#include <cstdlib>

namespace varno::bench {

std::string instructionSetInUse() {
    return DemoGain_ChooseRoutine().mName;
}

std::string whyInstructionSetIsMissing() {
    const char* const asked = std::getenv("VARNO_SIMD");
    const bool isMissing = asked != nullptr && instructionSetInUse() != asked;
    return isMissing ? "this processor lacks the instruction set " + std::string(asked) : "";
}

} // namespace varno::bench
