/// The fixture module's data model.
#ifndef VARNO_TESTS_HOST_FIXTUREPARAMETERS_H
#define VARNO_TESTS_HOST_FIXTUREPARAMETERS_H

#include "AAX_IACFAutomationDelegate.h"
#include "AAX_IACFController.h"
#include "AAX_IACFEffectParameters.h"
#include "ACF/ACFPtr.h"
#include "Tests/Host/FixtureObject.h"

#include <map>
#include <string>

namespace varno::fixture {

/// The chunk: the marker, then the gain as a double in the machine's byte order.
inline constexpr AAX_CTypeID kChunkID = AAX_FourCC("fxck");
inline constexpr std::uint32_t kChunkDataSize = 12;

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

/// Two parameters: "Gain", 0 to 1 in 101 steps, shown with two decimals; and "Bypass", "off" or "on", the
/// master bypass, which is not saved.
class FixtureParameters : public FixtureParametersBase {
public:
    static IACFUnknown* Create();

    ~FixtureParameters() override;

    AAX_Result Initialize(IACFUnknown* host) override;
    AAX_Result Uninitialize() override;
    AAX_Result NotificationReceived(AAX_CTypeID type, const void* data, std::uint32_t size) override;
    AAX_Result GetNumberOfParameters(std::int32_t* outCount) const override;
    AAX_Result GetMasterBypassParameter(AAX_IString* outID) const override;
    AAX_Result GetParameterIsAutomatable(AAX_CParamID paramID, std::uint8_t* outAutomatable) const override;
    AAX_Result GetParameterNumberOfSteps(AAX_CParamID paramID, std::int32_t* outSteps) const override;
    AAX_Result GetParameterName(AAX_CParamID paramID, AAX_IString* outName) const override;
    AAX_Result GetParameterDefaultNormalizedValue(AAX_CParamID paramID, double* outValue) const override;
    AAX_Result GetParameterType(AAX_CParamID paramID, AAX_EParameterType* outType) const override;
    AAX_Result GetParameterIDFromIndex(std::int32_t index, AAX_IString* outID) const override;
    AAX_Result GetParameterValueFromString(AAX_CParamID paramID, double* outValue,
                                           const AAX_IString& text) const override;
    AAX_Result GetParameterStringFromValue(AAX_CParamID paramID, double value, AAX_IString* outText,
                                           std::int32_t maxChars) const override;
    AAX_Result GetParameterValueString(AAX_CParamID paramID, AAX_IString* outText,
                                       std::int32_t maxChars) const override;
    AAX_Result GetParameterNormalizedValue(AAX_CParamID paramID, double* outValue) const override;
    AAX_Result SetParameterNormalizedValue(AAX_CParamID paramID, double value) override;
    AAX_Result TouchParameter(AAX_CParamID paramID) override;
    AAX_Result ReleaseParameter(AAX_CParamID paramID) override;
    AAX_Result UpdateParameterNormalizedValue(AAX_CParamID paramID, double value,
                                              AAX_EUpdateSource source) override;
    AAX_Result GenerateCoefficients() override;
    AAX_Result ResetFieldData(AAX_CFieldIndex field, void* data, std::uint32_t size) const override;
    AAX_Result GetChunkIDFromIndex(std::int32_t index, AAX_CTypeID* outID) const override;
    AAX_Result GetChunkSize(AAX_CTypeID chunkID, std::uint32_t* outSize) override;
    AAX_Result GetChunk(AAX_CTypeID chunkID, AAX_SPlugInChunk* chunk) override;
    AAX_Result SetChunk(AAX_CTypeID chunkID, const AAX_SPlugInChunk* chunk) override;
    AAX_Result CompareActiveChunk(const AAX_SPlugInChunk* chunk, std::uint8_t* outIsEqual) override;
    AAX_Result TimerWakeup() override;
    AAX_Result UpdatePageTable(std::uint32_t tableType, std::int32_t tablePageSize,
                               IACFUnknown* hostPageTable, IACFUnknown* host) const override;

    /// Calls of TimerWakeup, and the type of the last notification, of any data model so far.
    static int timerCalls();
    static AAX_CTypeID lastNotification();

private:
    bool isKnown(AAX_CParamID paramID) const { return mValues.count(paramID) > 0; }
    void misbehaveAtInitialization(IACFUnknown* host);
    void misbehaveWhilePosting();

    std::map<std::string, double> mValues;
    ACFPtr<AAX_IACFController_V2> mController;
    ACFPtr<AAX_IACFAutomationDelegate> mAutomation;
};

/// Posts the gain 0.125 to the last initialised instance, on the calling thread.
void postFromAnywhere();
/// Releases what a faulty module has kept: its host (after posting to it once more) and its data model.
void useAndReleaseKeptHost();
void releaseKeptDataModel();

} // namespace varno::fixture

#endif
