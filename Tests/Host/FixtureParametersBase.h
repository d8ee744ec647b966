/// What the fixture's data model does not do.
#ifndef VARNO_TESTS_HOST_FIXTUREPARAMETERSBASE_H
#define VARNO_TESTS_HOST_FIXTUREPARAMETERSBASE_H

#include "AAX_IACFEffectParameters.h"
#include "Tests/Host/FixtureObject.h"

namespace varno::fixture {

/// Answers every optional operation with AAX_ERROR_UNIMPLEMENTED.
class FixtureParametersBase : public FixtureObject<AAX_IACFEffectParameters> {
public:
    AAX_Result GetParameterNameOfLength(AAX_CParamID, AAX_IString*, std::int32_t) const override {
        return no();
    }
    AAX_Result SetParameterDefaultNormalizedValue(AAX_CParamID, double) override { return no(); }
    AAX_Result GetParameterOrientation(AAX_CParamID, std::int32_t*) const override { return no(); }
    AAX_Result GetParameter(AAX_CParamID, AAX_IParameter**) override { return no(); }
    AAX_Result GetParameterIndex(AAX_CParamID, std::int32_t*) const override { return no(); }
    AAX_Result GetParameterValueInfo(AAX_CParamID, std::int32_t, std::int32_t*) const override {
        return no();
    }
    AAX_Result SetParameterNormalizedRelative(AAX_CParamID, double) override { return no(); }
    AAX_Result UpdateParameterTouch(AAX_CParamID, std::uint8_t) override { return no(); }
    AAX_Result UpdateParameterNormalizedRelative(AAX_CParamID, double) override { return no(); }
    AAX_Result GetNumberOfChunks(std::int32_t*) const override { return no(); }
    AAX_Result GetNumberOfChanges(std::int32_t*) const override { return no(); }
    AAX_Result GetCurveData(AAX_CTypeID, const float*, std::uint32_t, float*) const override { return no(); }
    AAX_Result GetCurveDataMeterIds(AAX_CTypeID, std::uint32_t*, std::uint32_t*) const override {
        return no();
    }
    AAX_Result GetCurveDataDisplayRange(AAX_CTypeID, float*, float*, float*, float*) const override {
        return no();
    }
    AAX_Result GetCustomData(AAX_CTypeID, std::uint32_t, void*, std::uint32_t*) const override {
        return no();
    }
    AAX_Result SetCustomData(AAX_CTypeID, std::uint32_t, const void*) override { return no(); }
    AAX_Result DoMIDITransfers() override { return no(); }
    AAX_Result UpdateMIDINodes(AAX_CFieldIndex, AAX_CMidiPacket&) override { return no(); }
    AAX_Result UpdateControlMIDINodes(AAX_CTypeID, AAX_CMidiPacket&) override { return no(); }
    AAX_Result RenderAudio_Hybrid(void*) override { return no(); }

protected:
    FixtureParametersBase()
        : FixtureObject(IID_IAAXEffectParametersV1) {}

private:
    static AAX_Result no() { return AAX_ERROR_UNIMPLEMENTED; }
};

} // namespace varno::fixture

#endif
