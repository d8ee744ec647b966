#include "Tests/Host/FixtureParameters.h"

#include "AAX_IACFPageTable.h"
#include "Tests/Host/FixtureAlgorithm.h"
#include "Tests/Host/FixtureFaults.h"
#include "Tests/Host/FixtureModule.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace varno::fixture {

namespace {

constexpr const char* kIDs[] = {"Bypass", "Gain"};
constexpr double kDefaultGain = 0.5;
constexpr char kMarker[] = {1, 1, 1, 1};

AAX_IACFController* gLastController = nullptr;
IACFUnknown* gKeptHost = nullptr;
IACFUnknown* gKeptDataModel = nullptr;
int gTimerCalls = 0;
AAX_CTypeID gLastNotification = 0;

bool isGain(AAX_CParamID paramID) {
    return std::strcmp(paramID, "Gain") == 0;
}

// Answers queries for the root interface only.
class Mute final : public FixtureObject<IACFUnknown> {
public:
    Mute()
        : FixtureObject(IID_IACFUnknown) {}
};

} // namespace

IACFUnknown* FixtureParameters::Create() {
    if (has(Fault::kMakesNoDataModel)) {
        return nullptr;
    }
    if (has(Fault::kDataModelHasNoInterface)) {
        return new Mute;
    }
    return new FixtureParameters;
}

FixtureParameters::~FixtureParameters() = default;

AAX_Result FixtureParameters::Initialize(IACFUnknown* host) {
    mController = ACFPtr<AAX_IACFController_V2>::Query(host, IID_IAAXControllerV2);
    mAutomation = ACFPtr<AAX_IACFAutomationDelegate>::Query(host, IID_IAAXAutomationDelegateV1);
    gLastController = mController.Get();
    mValues = {{"Bypass", 0.0}, {"Gain", kDefaultGain}};
    if (mAutomation) {
        for (const char* id : kIDs) {
            mAutomation->RegisterParameter(id);
        }
    }
    misbehaveAtInitialization(host);
    return has(Fault::kInitializationFails) ? AAX_ERROR_NOT_INITIALIZED : AAX_SUCCESS;
}

void FixtureParameters::misbehaveAtInitialization(IACFUnknown* host) {
    if (has(Fault::kTracesAtInitialization)) {
        services()->Trace(AAX_eTracePriorityHost_High, "the fixture speaks");
    }
    if (has(Fault::kAssertsAtInitialization)) {
        services()->HandleAssertFailure("Fixture.cpp", 12, "1 == 2", AAX_eAssertFlags_Default);
    }
    if (has(Fault::kKeepsHost)) {
        host->AddRef();
        gKeptHost = host;
    }
    if (has(Fault::kReleasesHostTwice)) {
        host->Release();
    }
    if (has(Fault::kKeepsDataModel)) {
        AddRef();
        gKeptDataModel = this;
    }
    if (has(Fault::kUnregistersUnknownParameter)) {
        mAutomation->UnregisterParameter("Nobody");
    }
}

AAX_Result FixtureParameters::Uninitialize() {
    mController.Reset();
    mAutomation.Reset();
    gLastController = nullptr;
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::NotificationReceived(AAX_CTypeID type, const void*, std::uint32_t) {
    gLastNotification = type;
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::GetNumberOfParameters(std::int32_t* outCount) const {
    *outCount = static_cast<std::int32_t>(std::size(kIDs));
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::GetMasterBypassParameter(AAX_IString* outID) const {
    outID->Set("Bypass");
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::GetParameterIsAutomatable(AAX_CParamID, std::uint8_t* outAutomatable) const {
    *outAutomatable = 1;
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::GetParameterNumberOfSteps(AAX_CParamID paramID, std::int32_t* outSteps) const {
    *outSteps = isGain(paramID) ? 101 : 2;
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::GetParameterName(AAX_CParamID paramID, AAX_IString* outName) const {
    outName->Set(isGain(paramID) ? "Input Gain" : "Bypass");
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::GetParameterDefaultNormalizedValue(AAX_CParamID paramID,
                                                                 double* outValue) const {
    *outValue = isGain(paramID) ? kDefaultGain : 0.0;
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::GetParameterType(AAX_CParamID paramID, AAX_EParameterType* outType) const {
    *outType = isGain(paramID) ? AAX_eParameterType_Continuous : AAX_eParameterType_Discrete;
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::GetParameterIDFromIndex(std::int32_t index, AAX_IString* outID) const {
    outID->Set(kIDs[index]);
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::GetParameterValueFromString(AAX_CParamID paramID, double* outValue,
                                                          const AAX_IString& text) const {
    if (isGain(paramID)) {
        char* end = nullptr;
        *outValue = std::strtod(text.Get(), &end);
        return end == text.Get() ? AAX_ERROR_INVALID_STRING_CONVERSION : AAX_SUCCESS;
    }
    *outValue = std::strcmp(text.Get(), "on") == 0 ? 1.0 : 0.0;
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::GetParameterStringFromValue(AAX_CParamID paramID, double value,
                                                          AAX_IString* outText, std::int32_t) const {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", value);
    outText->Set(isGain(paramID) ? text : (value > 0.5 ? "on" : "off"));
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::GetParameterValueString(AAX_CParamID paramID, AAX_IString* outText,
                                                      std::int32_t maxChars) const {
    return GetParameterStringFromValue(paramID, mValues.at(paramID), outText, maxChars);
}

AAX_Result FixtureParameters::GetParameterNormalizedValue(AAX_CParamID paramID, double* outValue) const {
    if (!isKnown(paramID)) {
        return AAX_ERROR_INVALID_PARAMETER_ID;
    }
    *outValue = mValues.at(paramID);
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::SetParameterNormalizedValue(AAX_CParamID paramID, double value) {
    if (!mAutomation) {
        return UpdateParameterNormalizedValue(paramID, value, AAX_eUpdateSource_Unspecified);
    }
    mAutomation->PostTouchRequest(paramID);
    mAutomation->PostSetValueRequest(has(Fault::kRequestsUnknownParameter) ? "Nobody" : paramID,
                                     has(Fault::kRequestsInvalidValue) ? 1.5 : value);
    return mAutomation->PostReleaseRequest(paramID);
}

AAX_Result FixtureParameters::TouchParameter(AAX_CParamID paramID) {
    return mAutomation->PostTouchRequest(paramID);
}

AAX_Result FixtureParameters::ReleaseParameter(AAX_CParamID paramID) {
    return mAutomation->PostReleaseRequest(paramID);
}

AAX_Result FixtureParameters::UpdateParameterNormalizedValue(AAX_CParamID paramID, double value,
                                                             AAX_EUpdateSource) {
    if (!isKnown(paramID) || has(Fault::kRefusesUpdates)) {
        return AAX_ERROR_INVALID_PARAMETER_ID;
    }
    mValues[paramID] = value;
    return mAutomation ? mAutomation->PostCurrentValue(paramID, value) : AAX_SUCCESS;
}

AAX_Result FixtureParameters::GenerateCoefficients() {
    const auto gain = static_cast<float>(mValues.at("Gain"));
    const std::int32_t bypass = mValues.at("Bypass") > 0.5 ? 1 : 0;
    mController->PostPacket(kGain, &gain, sizeof gain);
    if (!has(Fault::kPostsNothingForBypass)) {
        mController->PostPacket(kBypass, &bypass, sizeof bypass);
    }
    misbehaveWhilePosting();
    return has(Fault::kGenerateFails) ? AAX_ERROR_POST_PACKET_FAILED : AAX_SUCCESS;
}

void FixtureParameters::misbehaveWhilePosting() {
    const double wrong = 1.0;
    if (has(Fault::kPostsToUnknownField)) {
        mController->PostPacket(kState, &wrong, sizeof wrong);
    }
    if (has(Fault::kPostsWrongSize)) {
        mController->PostPacket(kGain, &wrong, sizeof wrong);
    }
    if (has(Fault::kPostsFromAnotherThread)) {
        std::thread(postFromAnywhere).join();
    }
}

AAX_Result FixtureParameters::ResetFieldData(AAX_CFieldIndex, void* data, std::uint32_t size) const {
    const State state{0, kStart};
    std::memcpy(data, &state, size < sizeof state ? size : sizeof state);
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::GetChunkIDFromIndex(std::int32_t, AAX_CTypeID* outID) const {
    *outID = kChunkID;
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::GetChunkSize(AAX_CTypeID, std::uint32_t* outSize) {
    *outSize = kChunkDataSize;
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::GetChunk(AAX_CTypeID, AAX_SPlugInChunk* chunk) {
    chunk->fSize = kChunkDataSize;
    chunk->fVersion = -1;
    char* data = reinterpret_cast<char*>(chunk) + kAAX_PlugInChunkHeaderSize;
    std::memcpy(data, kMarker, sizeof kMarker);
    std::memcpy(data + sizeof kMarker, &mValues.at("Gain"), sizeof(double));
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::SetChunk(AAX_CTypeID, const AAX_SPlugInChunk* chunk) {
    double gain = 0.0;
    std::memcpy(&gain, reinterpret_cast<const char*>(chunk) + kAAX_PlugInChunkHeaderSize + sizeof kMarker,
                sizeof gain);
    return SetParameterNormalizedValue("Gain", has(Fault::kRefusesRestoredValue) && gain > 0.9 ? 0.75 : gain);
}

AAX_Result FixtureParameters::CompareActiveChunk(const AAX_SPlugInChunk* chunk, std::uint8_t* outIsEqual) {
    double gain = 0.0;
    std::memcpy(&gain, reinterpret_cast<const char*>(chunk) + kAAX_PlugInChunkHeaderSize + sizeof kMarker,
                sizeof gain);
    *outIsEqual = gain == mValues.at("Gain") ? 1 : 0;
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::TimerWakeup() {
    ++gTimerCalls;
    return AAX_SUCCESS;
}

AAX_Result FixtureParameters::UpdatePageTable(std::uint32_t, std::int32_t, IACFUnknown* hostPageTable,
                                              IACFUnknown*) const {
    const auto table = ACFPtr<AAX_IACFPageTable>::Query(hostPageTable, IID_IAAXPageTableV1);
    return table->MapParameterID("Bypass", 0, 7);
}

int FixtureParameters::timerCalls() {
    return gTimerCalls;
}

AAX_CTypeID FixtureParameters::lastNotification() {
    return gLastNotification;
}

void postFromAnywhere() {
    const float gain = 0.125F;
    gLastController->PostPacket(kGain, &gain, sizeof gain);
}

void useAndReleaseKeptHost() {
    {
        const auto controller = ACFPtr<AAX_IACFController>::Query(gKeptHost, IID_IAAXControllerV1);
        const float gain = 1.0F;
        controller->PostPacket(kGain, &gain, sizeof gain);
    }
    gKeptHost->Release();
    gKeptHost = nullptr;
}

void releaseKeptDataModel() {
    gKeptDataModel->Release();
    gKeptDataModel = nullptr;
}

} // namespace varno::fixture
