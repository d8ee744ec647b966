#include "Surround/Settings/EffectHost.h"

#include "DemoGain_MeterLaw.h"
#include "DemoGain_Oversampling.h"
#include "DemoGain_SampleRates.h"

namespace varno {

HostOptions effectHostOptions() {
    HostOptions options;
    options.sampleRates = {DemoGain_SampleRates::kLowestHz, DemoGain_SampleRates::kHighestHz};
    OversamplingRules& rules = options.oversampling;
    rules.coefficients = {{kDemoGain_UnscaledField, kDemoGain_ChoiceField, DemoGain_IsUnscaled}};
    rules.stateField = eAlgFieldID_State;
    for (const SDemoGain_StateBytes& bytes : DemoGain_CarriedState()) {
        rules.carriedState.push_back({bytes.mOffset, bytes.mSize});
    }
    for (const SDemoGain_AveragedLevel& level : DemoGain_AveragedLevels()) {
        rules.levels.push_back({level.mTap, level.mOffset, DemoGain::kAverageCoef});
    }
    return options;
}

} // namespace varno
