#include "DemoGain_Alg.h"

#include "Alg/DemoGain_Routine.h"

namespace {

// Chosen when the module is loaded: asking the processor for what it can do is nothing for the audio thread.
const SDemoGain_Routine& kRoutine = DemoGain_ChooseRoutine();

} // namespace

template<int kNumInputs, int kNumOutputs>
void DemoGain_AlgorithmProcessFunction(SDemoGain_Alg_Context* const inInstancesBegin[],
                                       const void* inInstancesEnd) {
    static_assert(kNumInputs == kNumOutputs && (kNumInputs == 1 || kNumInputs == 2));
    DemoGain_ProcessInstances(kRoutine, kNumInputs, inInstancesBegin,
                              static_cast<SDemoGain_Alg_Context* const*>(inInstancesEnd));
}

template void DemoGain_AlgorithmProcessFunction<1, 1>(SDemoGain_Alg_Context* const[], const void*);
template void DemoGain_AlgorithmProcessFunction<2, 2>(SDemoGain_Alg_Context* const[], const void*);
