/// Base of a plug-in's data model.
#ifndef VARNO_INTERFACES_AAX_CEFFECTPARAMETERS_H
#define VARNO_INTERFACES_AAX_CEFFECTPARAMETERS_H

#include "AAX_CChunkDataParser.h"
#include "AAX_CPacketDispatcher.h"
#include "AAX_CParameterManager.h"
#include "AAX_IEffectParameters.h"
#include "AAX_IdentifierOrder.h"

#include <memory>
#include <set>
#include <string>

class AAX_IController;
class AAX_IPageTable;
class AAX_VAutomationDelegate;
class AAX_VController;
class AAX_VTransport;

/// Identifier of the parameter that is the master bypass.
inline constexpr char cDefaultMasterBypassID[] = "MasterBypassID";

/// Implements AAX_IACFEffectParameters, which documents each operation, on a manager of parameters, a
/// dispatcher of packets and a parser of chunks. A plug-in derives from it and adds its parameters and
/// packets in EffectInit.
///
/// Everything that the host may call here is safe before Initialize and after Uninitialize, answers a null
/// output or record with AAX_ERROR_NULL_ARGUMENT unless stated otherwise, and throws nothing: a ResultError
/// becomes its code, any other AAX_ERROR_UNKNOWN_EXCEPTION, with one trace line. What a derived class
/// overrides must ensure this itself, except EffectInit, UpdatePageTable and packet handlers, which are
/// called from within.
class AAX_CEffectParameters : public AAX_IEffectParameters {
public:
    AAX_CEffectParameters();
    ~AAX_CEffectParameters() override;

    /// Answers for IID_IAAXEffectParametersV1 and leaves the rest to the base. On success the caller owns one
    /// reference. [any]
    ACFRESULT InternalQueryInterface(const acfIID& iid, void** outObject) override;

    /// As the interface states; a null host offers no service. Finally the master bypass is excluded from
    /// saving, and where there is none the empty identifier. [main]
    AAX_Result Initialize(IACFUnknown* host) override;
    AAX_Result Uninitialize() override;
    /// Sets the parameter "PreviewID", if there is one, from the host's notification of its preview state
    /// ('ASPv', a 32-bit integer). [main]
    AAX_Result NotificationReceived(AAX_CTypeID type, const void* data, uint32_t size) override;

    AAX_Result GetNumberOfParameters(int32_t* outCount) const override;
    AAX_Result GetMasterBypassParameter(AAX_IString* outID) const override;
    AAX_Result GetParameterIsAutomatable(AAX_CParamID paramID, uint8_t* outAutomatable) const override;
    AAX_Result GetParameterNumberOfSteps(AAX_CParamID paramID, int32_t* outSteps) const override;
    AAX_Result GetParameterName(AAX_CParamID paramID, AAX_IString* outName) const override;
    /// A name may hold several spellings separated by line feeds: the longest that fits is written, and if
    /// none fits the beginning of the name. [main]
    AAX_Result GetParameterNameOfLength(AAX_CParamID paramID, AAX_IString* outName,
                                        int32_t length) const override;
    AAX_Result GetParameterDefaultNormalizedValue(AAX_CParamID paramID, double* outValue) const override;
    AAX_Result SetParameterDefaultNormalizedValue(AAX_CParamID paramID, double value) override;
    AAX_Result GetParameterType(AAX_CParamID paramID, AAX_EParameterType* outType) const override;
    AAX_Result GetParameterOrientation(AAX_CParamID paramID, int32_t* outOrientation) const override;
    AAX_Result GetParameter(AAX_CParamID paramID, AAX_IParameter** outParameter) override;
    AAX_Result GetParameterIndex(AAX_CParamID paramID, int32_t* outIndex) const override;
    AAX_Result GetParameterIDFromIndex(int32_t index, AAX_IString* outID) const override;
    AAX_Result GetParameterValueInfo(AAX_CParamID paramID, int32_t selector, int32_t* outInfo) const override;

    AAX_Result GetParameterValueFromString(AAX_CParamID paramID, double* outValue,
                                           const AAX_IString& text) const override;
    AAX_Result GetParameterStringFromValue(AAX_CParamID paramID, double value, AAX_IString* outText,
                                           int32_t maxChars) const override;
    AAX_Result GetParameterValueString(AAX_CParamID paramID, AAX_IString* outText,
                                       int32_t maxChars) const override;

    AAX_Result GetParameterNormalizedValue(AAX_CParamID paramID, double* outValue) const override;
    AAX_Result SetParameterNormalizedValue(AAX_CParamID paramID, double value) override;
    AAX_Result SetParameterNormalizedRelative(AAX_CParamID paramID, double delta) override;
    AAX_Result TouchParameter(AAX_CParamID paramID) override;
    AAX_Result ReleaseParameter(AAX_CParamID paramID) override;
    AAX_Result UpdateParameterTouch(AAX_CParamID paramID, uint8_t isTouched) override;
    /// A change is counted when the parameter's normalized value is another afterwards. [main]
    AAX_Result UpdateParameterNormalizedValue(AAX_CParamID paramID, double value,
                                              AAX_EUpdateSource source) override;
    /// The sum of current value and `delta` is clamped to 0 to 1. [main]
    AAX_Result UpdateParameterNormalizedRelative(AAX_CParamID paramID, double delta) override;
    AAX_Result GenerateCoefficients() override;

    /// Fills the field with zero bytes. [any]
    AAX_Result ResetFieldData(AAX_CFieldIndex field, void* data, uint32_t size) const override;

    AAX_Result GetNumberOfChunks(int32_t* outCount) const override;
    AAX_Result GetChunkIDFromIndex(int32_t index, AAX_CTypeID* outID) const override;
    AAX_Result GetChunkSize(AAX_CTypeID chunkID, uint32_t* outSize) override;
    AAX_Result GetChunk(AAX_CTypeID chunkID, AAX_SPlugInChunk* chunk) override;
    AAX_Result SetChunk(AAX_CTypeID chunkID, const AAX_SPlugInChunk* chunk) override;
    AAX_Result CompareActiveChunk(const AAX_SPlugInChunk* chunk, uint8_t* outIsEqual) override;
    AAX_Result GetNumberOfChanges(int32_t* outCount) const override;

    AAX_Result TimerWakeup() override;
    AAX_Result GetCurveData(AAX_CTypeID curveType, const float* values, uint32_t count,
                            float* outValues) const override;
    AAX_Result GetCurveDataMeterIds(AAX_CTypeID curveType, uint32_t* outXMeterID,
                                    uint32_t* outYMeterID) const override;
    AAX_Result GetCurveDataDisplayRange(AAX_CTypeID curveType, float* outXMin, float* outXMax, float* outYMin,
                                        float* outYMax) const override;
    AAX_Result UpdatePageTable(uint32_t tableType, int32_t tablePageSize, IACFUnknown* hostPageTable,
                               IACFUnknown* host) const override;
    AAX_Result GetCustomData(AAX_CTypeID dataID, uint32_t size, void* outData,
                             uint32_t* outSize) const override;
    AAX_Result SetCustomData(AAX_CTypeID dataID, uint32_t size, const void* data) override;
    AAX_Result DoMIDITransfers() override;
    AAX_Result UpdateMIDINodes(AAX_CFieldIndex field, AAX_CMidiPacket& packet) override;
    AAX_Result UpdateControlMIDINodes(AAX_CTypeID nodeID, AAX_CMidiPacket& packet) override;
    AAX_Result RenderAudio_Hybrid(void* renderInfo) override;

    /// The host's controller; borrowed, null before Initialize and after Uninitialize. [any]
    AAX_IController* Controller();
    const AAX_IController* Controller() const;

protected:
    /// Where a derived class adds its parameters and packets; called by Initialize with everything below in
    /// place. The base does nothing. Returns AAX_SUCCESS, or the failure that Initialize is to answer with.
    /// [main]
    virtual AAX_Result EffectInit();
    /// Where a derived class changes a page table of the host's (borrowed). The base does nothing. Returns
    /// AAX_SUCCESS, or the failure that the host is to see. [main]
    virtual AAX_Result UpdatePageTable(uint32_t tableType, int32_t tablePageSize,
                                       AAX_IPageTable& pageTable) const;

    /// Leaves a parameter out of saved settings: it is not written, not restored and not compared. A null
    /// identifier is ignored. [main]
    void FilterParameterIDOnSave(AAX_CParamID paramID);

    int32_t mNumPlugInChanges = 0;
    int32_t mChunkSize = 0;            ///< Bytes, as the last GetChunkSize returned.
    AAX_CChunkDataParser mChunkParser; ///< Empty between the operations that use it.
    int32_t mNumChunkedParameters = 0; ///< Parameters that are saved.
    AAX_CPacketDispatcher mPacketDispatcher;
    AAX_CParameterManager mParameterManager;

private:
    /// Destroys the parameters, their packets and everything of the host's.
    void LetGo();
    void CountChange();
    /// Adds the current values to the parser.
    void BuildChunkData(AAX_CChunkDataParser& parser) const;

    std::set<std::string, AAX_SIdentifierOrder> mFilteredParameters; ///< Identifiers that are not saved.
    std::unique_ptr<AAX_VController> mController;
    std::unique_ptr<AAX_VTransport> mTransport;
    std::unique_ptr<AAX_VAutomationDelegate> mAutomationDelegate;
};

#endif
