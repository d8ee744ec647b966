/// A data model whose parts a test can reach.
#ifndef VARNO_TESTS_SUPPORT_TESTEFFECT_H
#define VARNO_TESTS_SUPPORT_TESTEFFECT_H

#include "AAX_CEffectParameters.h"
#include "AAX_IParameter.h"
#include "ACF/ACFPtr.h"

#include <functional>
#include <memory>

namespace varno::test {

/// Runs what the test wants as its EffectInit.
class TestEffect : public AAX_CEffectParameters {
public:
    using AAX_CEffectParameters::FilterParameterIDOnSave;
    using AAX_CEffectParameters::mChunkSize;
    using AAX_CEffectParameters::mNumChunkedParameters;
    using AAX_CEffectParameters::mNumPlugInChanges;
    using AAX_CEffectParameters::mPacketDispatcher;
    using AAX_CEffectParameters::mParameterManager;

    std::function<AAX_Result(TestEffect&)> onInit = [](TestEffect&) { return AAX_SUCCESS; };

    /// Adds a parameter, which must not be there yet. Returns it, borrowed.
    template<class Parameter>
    Parameter* add(std::unique_ptr<Parameter> parameter) {
        Parameter* const added = parameter.get();
        if (mParameterManager.AddParameter(added)) {
            static_cast<void>(parameter.release());
        }
        return added;
    }

protected:
    AAX_Result EffectInit() override { return onInit(*this); }
};

/// A new effect; the test holds its one reference.
inline ACFPtr<TestEffect> makeTestEffect() {
    return ACFPtr<TestEffect>::Retain(new TestEffect);
}

} // namespace varno::test

#endif
