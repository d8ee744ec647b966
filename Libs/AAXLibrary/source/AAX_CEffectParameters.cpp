#include "AAX_CEffectParameters.h"

#include "AAX_Assert.h"
#include "AAX_CString.h"
#include "AAX_Guarded.h"
#include "AAX_IParameter.h"
#include "AAX_VAutomationDelegate.h"
#include "AAX_VController.h"
#include "AAX_VPageTable.h"
#include "AAX_VTransport.h"
#include "NameOfLength.h"
#include "SavedParameter.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace {

/// Kind of the one chunk there is.
constexpr AAX_CTypeID kChunkID = AAX_FourCC("elck");
constexpr char kChunkName[] = "Complete Controls State";
static_assert(sizeof(kChunkName) <= sizeof(AAX_SPlugInChunk::fName));

/// The host's preview state has changed.
constexpr AAX_CTypeID kPreviewStateNotification = AAX_FourCC("ASPv");
constexpr char kPreviewParameterID[] = "PreviewID";

/// Answers with what `action` makes of the parameter with an identifier, as the body of `entry`.
template<class Manager, class Action>
AAX_Result WithParameter(const char* entry, Manager& manager, AAX_CParamID paramID, Action&& action) {
    return AAX_Guarded(entry, [&]() -> AAX_Result {
        auto* parameter = manager.GetParameterByID(paramID);
        return parameter != nullptr ? action(*parameter) : AAX_ERROR_INVALID_PARAMETER_ID;
    });
}

/// Writes what `get` tells of the parameter with an identifier, as the body of `entry`.
template<class Out, class Get>
AAX_Result ReadParameter(const char* entry, const AAX_CParameterManager& manager, AAX_CParamID paramID,
                         Out* out, Get&& get) {
    if (out == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return WithParameter(entry, manager, paramID, [&](const AAX_IParameter& parameter) {
        *out = get(parameter);
        return AAX_SUCCESS;
    });
}

/// Does something with the parameter with an identifier, as the body of `entry`.
template<class Action>
AAX_Result ChangeParameter(const char* entry, AAX_CParameterManager& manager, AAX_CParamID paramID,
                           Action&& action) {
    return WithParameter(entry, manager, paramID, [&](AAX_IParameter& parameter) {
        action(parameter);
        return AAX_SUCCESS;
    });
}

/// Writes a value that is always the same.
template<class T>
AAX_Result WriteOut(T* out, T value, AAX_Result result = AAX_SUCCESS) {
    if (out == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *out = value;
    return result;
}

} // namespace

AAX_CEffectParameters::AAX_CEffectParameters() = default;

AAX_CEffectParameters::~AAX_CEffectParameters() = default;

ACFRESULT AAX_CEffectParameters::InternalQueryInterface(const acfIID& iid, void** outObject) {
    return AnswerInterface(IID_IAAXEffectParametersV1, iid, outObject);
}

// Life.

AAX_Result AAX_CEffectParameters::Initialize(IACFUnknown* host) {
    return AAX_Guarded(__func__, [&]() -> AAX_Result {
        LetGo();
        mController = std::make_unique<AAX_VController>(host);
        mAutomationDelegate = std::make_unique<AAX_VAutomationDelegate>(host);
        mTransport = std::make_unique<AAX_VTransport>(host);
        mParameterManager.Initialize(mAutomationDelegate.get());
        mPacketDispatcher.Initialize(mController.get(), this);

        if (const AAX_Result result = EffectInit(); result != AAX_SUCCESS) {
            return result;
        }
        AAX_CString masterBypassID;
        GetMasterBypassParameter(&masterBypassID);
        if (masterBypassID.Length() > 0) {
            FilterParameterIDOnSave(masterBypassID.Get());
        }
        if (mParameterManager.NumParameters() > 0) {
            mNumChunkedParameters =
                mParameterManager.NumParameters() - static_cast<int32_t>(mFilteredParameters.size());
            AAX_ASSERT(mNumChunkedParameters >= 0);
        }
        return AAX_SUCCESS;
    });
}

AAX_Result AAX_CEffectParameters::Uninitialize() {
    return AAX_Guarded(__func__, [this] {
        LetGo();
        return AAX_SUCCESS;
    });
}

void AAX_CEffectParameters::LetGo() {
    mParameterManager.RemoveAllParameters();
    mParameterManager.Initialize(nullptr);
    mPacketDispatcher.Initialize(nullptr, this);
    mController.reset();
    mAutomationDelegate.reset();
    mTransport.reset();
}

AAX_Result AAX_CEffectParameters::NotificationReceived(AAX_CTypeID type, const void* data, uint32_t size) {
    int32_t state = 0;
    if (type != kPreviewStateNotification || data == nullptr || size < sizeof(state)) {
        return AAX_SUCCESS;
    }
    std::memcpy(&state, data, sizeof(state));
    ChangeParameter(__func__, mParameterManager, kPreviewParameterID,
                    [state](AAX_IParameter& parameter) { parameter.SetValueWithBool(state != 0); });
    return AAX_SUCCESS;
}

// What a parameter is.

AAX_Result AAX_CEffectParameters::GetNumberOfParameters(int32_t* outCount) const {
    return WriteOut(outCount, mParameterManager.NumParameters());
}

AAX_Result AAX_CEffectParameters::GetMasterBypassParameter(AAX_IString* outID) const {
    if (outID == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return AAX_Guarded(__func__, [&] {
        const bool exists = mParameterManager.GetParameterByID(cDefaultMasterBypassID) != nullptr;
        outID->Set(exists ? cDefaultMasterBypassID : "");
        return AAX_SUCCESS;
    });
}

AAX_Result AAX_CEffectParameters::GetParameterIsAutomatable(AAX_CParamID paramID,
                                                            uint8_t* outAutomatable) const {
    if (outAutomatable != nullptr) {
        *outAutomatable = 0;
    }
    return ReadParameter(__func__, mParameterManager, paramID, outAutomatable,
                         [](const AAX_IParameter& parameter) {
                             return static_cast<uint8_t>(parameter.Automatable() ? 1 : 0);
                         });
}

AAX_Result AAX_CEffectParameters::GetParameterNumberOfSteps(AAX_CParamID paramID, int32_t* outSteps) const {
    if (outSteps == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return WithParameter(__func__, mParameterManager, paramID,
                         [outSteps](const AAX_IParameter& parameter) -> AAX_Result {
                             const uint32_t steps = parameter.GetNumberOfSteps();
                             if (!std::in_range<int32_t>(steps)) {
                                 return AAX_ERROR_SIGNED_INT_OVERFLOW;
                             }
                             *outSteps = static_cast<int32_t>(steps);
                             return AAX_SUCCESS;
                         });
}

AAX_Result AAX_CEffectParameters::GetParameterName(AAX_CParamID paramID, AAX_IString* outName) const {
    if (outName == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return AAX_Guarded(__func__, [&] {
        const AAX_IParameter* parameter = mParameterManager.GetParameterByID(paramID);
        outName->Set(parameter != nullptr ? parameter->Name().Get() : "");
        return AAX_SUCCESS;
    });
}

AAX_Result AAX_CEffectParameters::GetParameterNameOfLength(AAX_CParamID paramID, AAX_IString* outName,
                                                           int32_t length) const {
    if (outName == nullptr) {
        return AAX_ERROR_INVALID_STRING_CONVERSION;
    }
    return AAX_Guarded(__func__, [&] {
        const AAX_IParameter* parameter = mParameterManager.GetParameterByID(paramID);
        const char* names = parameter != nullptr ? parameter->ShortenedName(length).Get() : "";
        outName->Set(std::string(NameOfLength(names, length)).c_str());
        return AAX_SUCCESS;
    });
}

AAX_Result AAX_CEffectParameters::GetParameterDefaultNormalizedValue(AAX_CParamID paramID,
                                                                     double* outValue) const {
    return ReadParameter(__func__, mParameterManager, paramID, outValue, [](const AAX_IParameter& parameter) {
        return parameter.GetNormalizedDefaultValue();
    });
}

AAX_Result AAX_CEffectParameters::SetParameterDefaultNormalizedValue(AAX_CParamID paramID, double value) {
    return ChangeParameter(__func__, mParameterManager, paramID, [value](AAX_IParameter& parameter) {
        parameter.SetNormalizedDefaultValue(value);
    });
}

AAX_Result AAX_CEffectParameters::GetParameterType(AAX_CParamID paramID, AAX_EParameterType* outType) const {
    return ReadParameter(__func__, mParameterManager, paramID, outType,
                         [](const AAX_IParameter& parameter) { return parameter.GetType(); });
}

AAX_Result AAX_CEffectParameters::GetParameterOrientation(AAX_CParamID paramID,
                                                          int32_t* outOrientation) const {
    return ReadParameter(__func__, mParameterManager, paramID, outOrientation,
                         [](const AAX_IParameter& parameter) { return parameter.GetOrientation(); });
}

AAX_Result AAX_CEffectParameters::GetParameter(AAX_CParamID paramID, AAX_IParameter** outParameter) {
    if (outParameter == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *outParameter = mParameterManager.GetParameterByID(paramID);
    return *outParameter != nullptr ? AAX_SUCCESS : AAX_ERROR_INVALID_PARAMETER_ID;
}

AAX_Result AAX_CEffectParameters::GetParameterIndex(AAX_CParamID paramID, int32_t* outIndex) const {
    if (outIndex == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *outIndex = mParameterManager.GetParameterIndex(paramID);
    return *outIndex >= 0 ? AAX_SUCCESS : AAX_ERROR_INVALID_PARAMETER_ID;
}

AAX_Result AAX_CEffectParameters::GetParameterIDFromIndex(int32_t index, AAX_IString* outID) const {
    if (outID == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return AAX_Guarded(__func__, [&] {
        const AAX_IParameter* parameter = mParameterManager.GetParameter(index);
        outID->Set(parameter != nullptr ? parameter->Identifier() : "");
        return parameter != nullptr ? AAX_SUCCESS : AAX_ERROR_INVALID_PARAMETER_ID;
    });
}

AAX_Result AAX_CEffectParameters::GetParameterValueInfo(AAX_CParamID /*paramID*/, int32_t /*selector*/,
                                                        int32_t* outInfo) const {
    return WriteOut(outInfo, 0, AAX_ERROR_UNIMPLEMENTED);
}

// Text.

AAX_Result AAX_CEffectParameters::GetParameterValueFromString(AAX_CParamID paramID, double* outValue,
                                                              const AAX_IString& text) const {
    if (outValue == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return WithParameter(__func__, mParameterManager, paramID, [&](const AAX_IParameter& parameter) {
        return parameter.GetNormalizedValueFromString(AAX_CString(text), outValue)
                   ? AAX_SUCCESS
                   : AAX_ERROR_INVALID_STRING_CONVERSION;
    });
}

AAX_Result AAX_CEffectParameters::GetParameterStringFromValue(AAX_CParamID paramID, double value,
                                                              AAX_IString* outText, int32_t maxChars) const {
    if (outText == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return WithParameter(__func__, mParameterManager, paramID,
                         [&](const AAX_IParameter& parameter) -> AAX_Result {
                             AAX_CString text;
                             if (!parameter.GetStringFromNormalizedValue(value, maxChars, text)) {
                                 return AAX_ERROR_INVALID_STRING_CONVERSION;
                             }
                             outText->Set(text.Get());
                             return AAX_SUCCESS;
                         });
}

AAX_Result AAX_CEffectParameters::GetParameterValueString(AAX_CParamID paramID, AAX_IString* outText,
                                                          int32_t maxChars) const {
    return ReadParameter(__func__, mParameterManager, paramID, outText,
                         [maxChars](const AAX_IParameter& parameter) {
                             AAX_CString text;
                             parameter.GetValueString(maxChars, &text);
                             return text;
                         });
}

// Values.

AAX_Result AAX_CEffectParameters::GetParameterNormalizedValue(AAX_CParamID paramID, double* outValue) const {
    return ReadParameter(__func__, mParameterManager, paramID, outValue,
                         [](const AAX_IParameter& parameter) { return parameter.GetNormalizedValue(); });
}

AAX_Result AAX_CEffectParameters::SetParameterNormalizedValue(AAX_CParamID paramID, double value) {
    return ChangeParameter(__func__, mParameterManager, paramID,
                           [value](AAX_IParameter& parameter) { parameter.SetNormalizedValue(value); });
}

AAX_Result AAX_CEffectParameters::SetParameterNormalizedRelative(AAX_CParamID paramID, double delta) {
    return ChangeParameter(__func__, mParameterManager, paramID, [delta](AAX_IParameter& parameter) {
        parameter.SetNormalizedValue(std::min(parameter.GetNormalizedValue() + delta, 1.0));
    });
}

AAX_Result AAX_CEffectParameters::TouchParameter(AAX_CParamID paramID) {
    return ChangeParameter(__func__, mParameterManager, paramID,
                           [](AAX_IParameter& parameter) { parameter.Touch(); });
}

AAX_Result AAX_CEffectParameters::ReleaseParameter(AAX_CParamID paramID) {
    return ChangeParameter(__func__, mParameterManager, paramID,
                           [](AAX_IParameter& parameter) { parameter.Release(); });
}

AAX_Result AAX_CEffectParameters::UpdateParameterTouch(AAX_CParamID /*paramID*/, uint8_t /*isTouched*/) {
    return AAX_SUCCESS;
}

AAX_Result AAX_CEffectParameters::UpdateParameterNormalizedValue(AAX_CParamID paramID, double value,
                                                                 AAX_EUpdateSource /*source*/) {
    return WithParameter(__func__, mParameterManager, paramID, [&](AAX_IParameter& parameter) {
        const double valueBefore = parameter.GetNormalizedValue();
        parameter.UpdateNormalizedValue(value);
        const AAX_Result result = mPacketDispatcher.SetDirty(paramID, true);
        if (parameter.GetNormalizedValue() != valueBefore) {
            CountChange();
        }
        return result;
    });
}

void AAX_CEffectParameters::CountChange() {
    // Wraps below zero rather than overflow; the count is not told then.
    mNumPlugInChanges = static_cast<int32_t>(static_cast<uint32_t>(mNumPlugInChanges) + 1U);
}

AAX_Result AAX_CEffectParameters::UpdateParameterNormalizedRelative(AAX_CParamID paramID, double delta) {
    return WithParameter(__func__, mParameterManager, paramID, [&](const AAX_IParameter& parameter) {
        const double value = std::clamp(parameter.GetNormalizedValue() + delta, 0.0, 1.0);
        return UpdateParameterNormalizedValue(paramID, value, AAX_eUpdateSource_Unspecified);
    });
}

AAX_Result AAX_CEffectParameters::GenerateCoefficients() {
    return AAX_Guarded(__func__, [this] { return mPacketDispatcher.Dispatch(); });
}

// State of the algorithm.

AAX_Result AAX_CEffectParameters::ResetFieldData(AAX_CFieldIndex /*field*/, void* data, uint32_t size) const {
    if (data == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    std::memset(data, 0, size);
    return AAX_SUCCESS;
}

// Saved settings.

void AAX_CEffectParameters::FilterParameterIDOnSave(AAX_CParamID paramID) {
    if (paramID != nullptr) {
        mFilteredParameters.emplace(paramID);
    }
}

AAX_Result AAX_CEffectParameters::GetNumberOfChunks(int32_t* outCount) const {
    return WriteOut(outCount, 1);
}

AAX_Result AAX_CEffectParameters::GetChunkIDFromIndex(int32_t index, AAX_CTypeID* outID) const {
    return index == 0 ? WriteOut(outID, kChunkID)
                      : WriteOut(outID, AAX_CTypeID{0}, AAX_ERROR_INVALID_CHUNK_INDEX);
}

void AAX_CEffectParameters::BuildChunkData() {
    mChunkParser.Clear();
    VisitSavedParameters(mParameterManager, mFilteredParameters, [this](const AAX_IParameter& parameter) {
        SaveParameter(parameter, mChunkParser);
        return true;
    });
}

AAX_Result AAX_CEffectParameters::GetChunkSize(AAX_CTypeID chunkID, uint32_t* outSize) {
    if (outSize == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *outSize = 0;
    if (chunkID != kChunkID) {
        return AAX_ERROR_INVALID_CHUNK_ID;
    }
    return AAX_Guarded(__func__, [&]() -> AAX_Result {
        BuildChunkData();
        mChunkSize = mChunkParser.GetChunkDataSize();
        if (mChunkSize < 0) {
            return AAX_ERROR_INCORRECT_CHUNK_SIZE;
        }
        *outSize = static_cast<uint32_t>(mChunkSize);
        return AAX_SUCCESS;
    });
}

AAX_Result AAX_CEffectParameters::GetChunk(AAX_CTypeID chunkID, AAX_SPlugInChunk* chunk) {
    if (chunkID != kChunkID) {
        return AAX_ERROR_INVALID_CHUNK_ID;
    }
    if (chunk == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return AAX_Guarded(__func__, [&]() -> AAX_Result {
        BuildChunkData();
        const int32_t size = mChunkParser.GetChunkDataSize();
        if (size != mChunkSize || size == 0) {
            return AAX_ERROR_INCORRECT_CHUNK_SIZE;
        }
        chunk->fVersion = mChunkParser.GetChunkVersion();
        std::memset(chunk->fName, 0, sizeof(chunk->fName));
        std::memcpy(chunk->fName, kChunkName, sizeof(kChunkName));
        return mChunkParser.GetChunkData(chunk);
    });
}

AAX_Result AAX_CEffectParameters::SetChunk(AAX_CTypeID chunkID, const AAX_SPlugInChunk* chunk) {
    if (chunkID != kChunkID) {
        return AAX_ERROR_INVALID_CHUNK_ID;
    }
    if (chunk == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return AAX_Guarded(__func__, [&] {
        mChunkParser.LoadChunk(chunk);
        VisitSavedParameters(mParameterManager, mFilteredParameters, [this](AAX_IParameter& parameter) {
            RestoreParameter(parameter, mChunkParser);
            return true;
        });
        return AAX_SUCCESS;
    });
}

AAX_Result AAX_CEffectParameters::CompareActiveChunk(const AAX_SPlugInChunk* chunk, uint8_t* outIsEqual) {
    if (chunk == nullptr || outIsEqual == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    // Another plug-in's chunk, or another kind, says nothing about these values: it never marks them changed.
    if (chunk->fChunkID != kChunkID) {
        *outIsEqual = 1;
        return AAX_SUCCESS;
    }
    *outIsEqual = 0;
    return AAX_Guarded(__func__, [&] {
        mChunkParser.LoadChunk(chunk);
        const bool isEqual = VisitSavedParameters(
            mParameterManager, mFilteredParameters,
            [this](const AAX_IParameter& parameter) { return IsParameterAsSaved(parameter, mChunkParser); });
        *outIsEqual = isEqual ? 1 : 0;
        return AAX_SUCCESS;
    });
}

AAX_Result AAX_CEffectParameters::GetNumberOfChanges(int32_t* outCount) const {
    if (outCount == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    if (mNumPlugInChanges >= 0) {
        *outCount = mNumPlugInChanges;
    }
    return AAX_SUCCESS;
}

// The rest.

AAX_Result AAX_CEffectParameters::TimerWakeup() {
    return AAX_SUCCESS;
}

AAX_Result AAX_CEffectParameters::GetCurveData(AAX_CTypeID /*curveType*/, const float* /*values*/,
                                               uint32_t /*count*/, float* /*outValues*/) const {
    return AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_CEffectParameters::GetCurveDataMeterIds(AAX_CTypeID /*curveType*/, uint32_t* /*outXMeterID*/,
                                                       uint32_t* /*outYMeterID*/) const {
    return AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_CEffectParameters::GetCurveDataDisplayRange(AAX_CTypeID /*curveType*/, float* /*outXMin*/,
                                                           float* /*outXMax*/, float* /*outYMin*/,
                                                           float* /*outYMax*/) const {
    return AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_CEffectParameters::UpdatePageTable(uint32_t tableType, int32_t tablePageSize,
                                                  IACFUnknown* hostPageTable, IACFUnknown* /*host*/) const {
    return AAX_Guarded(__func__, [&]() -> AAX_Result {
        AAX_VPageTable pageTable(hostPageTable);
        return pageTable.IsValid() ? UpdatePageTable(tableType, tablePageSize, pageTable) : AAX_SUCCESS;
    });
}

AAX_Result AAX_CEffectParameters::GetCustomData(AAX_CTypeID /*dataID*/, uint32_t /*size*/, void* /*outData*/,
                                                uint32_t* outSize) const {
    return WriteOut(outSize, 0U);
}

AAX_Result AAX_CEffectParameters::SetCustomData(AAX_CTypeID /*dataID*/, uint32_t /*size*/,
                                                const void* /*data*/) {
    return AAX_SUCCESS;
}

AAX_Result AAX_CEffectParameters::DoMIDITransfers() {
    return AAX_SUCCESS;
}

AAX_Result AAX_CEffectParameters::UpdateMIDINodes(AAX_CFieldIndex /*field*/, AAX_CMidiPacket& /*packet*/) {
    return AAX_SUCCESS;
}

AAX_Result AAX_CEffectParameters::UpdateControlMIDINodes(AAX_CTypeID /*nodeID*/,
                                                         AAX_CMidiPacket& /*packet*/) {
    return AAX_SUCCESS;
}

AAX_Result AAX_CEffectParameters::RenderAudio_Hybrid(void* /*renderInfo*/) {
    return AAX_ERROR_UNIMPLEMENTED;
}

AAX_IController* AAX_CEffectParameters::Controller() {
    return mController.get();
}

const AAX_IController* AAX_CEffectParameters::Controller() const {
    return mController.get();
}

AAX_Result AAX_CEffectParameters::EffectInit() {
    return AAX_SUCCESS;
}

AAX_Result AAX_CEffectParameters::UpdatePageTable(uint32_t /*tableType*/, int32_t /*tablePageSize*/,
                                                  AAX_IPageTable& /*pageTable*/) const {
    return AAX_SUCCESS;
}
