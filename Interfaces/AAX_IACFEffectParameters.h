/// The data model as the host sees it.
#ifndef VARNO_INTERFACES_AAX_IACFEFFECTPARAMETERS_H
#define VARNO_INTERFACES_AAX_IACFEFFECTPARAMETERS_H

#include "AAX.h"
#include "AAX_IString.h"

class AAX_IParameter;

/// Version 1 (IID_IAAXEffectParametersV1), implemented by the plug-in and made by its data-model creation
/// procedure. Parameters are addressed by identifier (exact, case-sensitive); values are normalized, 0 to 1.
/// Unless said otherwise an unknown identifier gives AAX_ERROR_INVALID_PARAMETER_ID, before Initialize each
/// does, and outputs must not be null. The host serialises all [main] calls on one instance.
class AAX_IACFEffectParameters : public IACFUnknown {
public:
    // Life.

    /// Gives the data model the host object (borrowed for the call), which answers to the controller, the
    /// transport and the automation delegate, and builds the parameters. Before anything else; called again,
    /// it ends the life before, as Uninitialize does, and begins another, whose first GenerateCoefficients
    /// posts everything. Returns AAX_SUCCESS, or the failure of building the parameters. [main]
    virtual AAX_Result Initialize(IACFUnknown* host) = 0;
    /// Destroys the parameters and releases the host. Returns AAX_SUCCESS, or the code of what the host
    /// throws meanwhile, with the same effect. [main]
    virtual AAX_Result Uninitialize() = 0;
    /// Takes a notification of `size` bytes (borrowed). Returns AAX_SUCCESS. [main]
    virtual AAX_Result NotificationReceived(AAX_CTypeID type, const void* data, uint32_t size) = 0;

    // What a parameter is.

    /// The number of parameters. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetNumberOfParameters(int32_t* outCount) const = 0;
    /// The identifier of the master bypass, the empty text when there is none. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetMasterBypassParameter(AAX_IString* outID) const = 0;
    /// 1 when the parameter can be automated, else 0. Returns AAX_SUCCESS or
    /// AAX_ERROR_INVALID_PARAMETER_ID. [main]
    virtual AAX_Result GetParameterIsAutomatable(AAX_CParamID paramID, uint8_t* outAutomatable) const = 0;
    /// The number of steps, 1 or more. Returns AAX_SUCCESS; AAX_ERROR_INVALID_PARAMETER_ID;
    /// AAX_ERROR_SIGNED_INT_OVERFLOW for a count above 2^31 - 1. [main]
    virtual AAX_Result GetParameterNumberOfSteps(AAX_CParamID paramID, int32_t* outSteps) const = 0;
    /// The display name; the empty text for an unknown identifier. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetParameterName(AAX_CParamID paramID, AAX_IString* outName) const = 0;
    /// The best display name of at most `length` characters; the empty text for an unknown identifier.
    /// Returns AAX_SUCCESS, or AAX_ERROR_INVALID_STRING_CONVERSION for a null output. [main]
    virtual AAX_Result GetParameterNameOfLength(AAX_CParamID paramID, AAX_IString* outName,
                                                int32_t length) const = 0;
    /// The normalized default. Returns AAX_SUCCESS or AAX_ERROR_INVALID_PARAMETER_ID. [main]
    virtual AAX_Result GetParameterDefaultNormalizedValue(AAX_CParamID paramID, double* outValue) const = 0;
    /// Sets the normalized default, not the value. Returns AAX_SUCCESS or
    /// AAX_ERROR_INVALID_PARAMETER_ID. [main]
    virtual AAX_Result SetParameterDefaultNormalizedValue(AAX_CParamID paramID, double value) = 0;
    /// Whether the parameter's values are steps. Returns AAX_SUCCESS or AAX_ERROR_INVALID_PARAMETER_ID.
    /// [main]
    virtual AAX_Result GetParameterType(AAX_CParamID paramID, AAX_EParameterType* outType) const = 0;
    /// The orientation of the parameter's control, host-defined bits. Returns AAX_SUCCESS or
    /// AAX_ERROR_INVALID_PARAMETER_ID. [main]
    virtual AAX_Result GetParameterOrientation(AAX_CParamID paramID, int32_t* outOrientation) const = 0;
    /// The parameter itself, owned by the data model, gone with Uninitialize. Returns AAX_SUCCESS, or
    /// AAX_ERROR_INVALID_PARAMETER_ID and null. [main]
    virtual AAX_Result GetParameter(AAX_CParamID paramID, AAX_IParameter** outParameter) = 0;
    /// The index of a parameter, from 0. Returns AAX_SUCCESS, or AAX_ERROR_INVALID_PARAMETER_ID and -1.
    /// [main]
    virtual AAX_Result GetParameterIndex(AAX_CParamID paramID, int32_t* outIndex) const = 0;
    /// The identifier of the parameter at an index. Returns AAX_SUCCESS, or AAX_ERROR_INVALID_PARAMETER_ID
    /// and the empty text for an index out of range. [main]
    virtual AAX_Result GetParameterIDFromIndex(int32_t index, AAX_IString* outID) const = 0;
    /// Host-defined information on a value. Returns AAX_ERROR_UNIMPLEMENTED and 0. [main]
    virtual AAX_Result GetParameterValueInfo(AAX_CParamID paramID, int32_t selector,
                                             int32_t* outInfo) const = 0;

    // Text.

    /// A text as a normalized value. Returns AAX_SUCCESS; AAX_ERROR_INVALID_PARAMETER_ID;
    /// AAX_ERROR_INVALID_STRING_CONVERSION for a text that is no value. [main]
    virtual AAX_Result GetParameterValueFromString(AAX_CParamID paramID, double* outValue,
                                                   const AAX_IString& text) const = 0;
    /// A normalized value as text meant for `maxChars` characters (negative counts as 0). A number is cut to
    /// them. A switch, as the master bypass, has the widest of its pairs of texts that is meant for so many,
    /// else the narrowest, and without shortened pairs its full text, however long. Returns AAX_SUCCESS;
    /// AAX_ERROR_INVALID_PARAMETER_ID; AAX_ERROR_INVALID_STRING_CONVERSION. [main]
    virtual AAX_Result GetParameterStringFromValue(AAX_CParamID paramID, double value, AAX_IString* outText,
                                                   int32_t maxChars) const = 0;
    /// The current value as text meant for `maxChars` characters, as in GetParameterStringFromValue.
    /// Returns AAX_SUCCESS or AAX_ERROR_INVALID_PARAMETER_ID. [main]
    virtual AAX_Result GetParameterValueString(AAX_CParamID paramID, AAX_IString* outText,
                                               int32_t maxChars) const = 0;

    // Values.

    /// The current normalized value. Returns AAX_SUCCESS or AAX_ERROR_INVALID_PARAMETER_ID. [main]
    virtual AAX_Result GetParameterNormalizedValue(AAX_CParamID paramID, double* outValue) const = 0;
    /// Asks the host for a value through its automation, and leaves it as it is until the host answers with
    /// UpdateParameterNormalizedValue; a host without automation never does.
    /// Returns AAX_SUCCESS or AAX_ERROR_INVALID_PARAMETER_ID. [main]
    virtual AAX_Result SetParameterNormalizedValue(AAX_CParamID paramID, double value) = 0;
    /// Asks for the current value plus `delta`, at most 1. Returns AAX_SUCCESS or
    /// AAX_ERROR_INVALID_PARAMETER_ID. [main]
    virtual AAX_Result SetParameterNormalizedRelative(AAX_CParamID paramID, double delta) = 0;
    /// Begins a gesture; gestures nest. Returns AAX_SUCCESS or AAX_ERROR_INVALID_PARAMETER_ID. [main]
    virtual AAX_Result TouchParameter(AAX_CParamID paramID) = 0;
    /// Ends the innermost gesture. Returns AAX_SUCCESS or AAX_ERROR_INVALID_PARAMETER_ID. [main]
    virtual AAX_Result ReleaseParameter(AAX_CParamID paramID) = 0;
    /// Tells that the host has touched (1) or released (0) a parameter. Returns AAX_SUCCESS. [main]
    virtual AAX_Result UpdateParameterTouch(AAX_CParamID paramID, uint8_t isTouched) = 0;
    /// Called by the host when a parameter has a new value: stores it and marks its packet for the next
    /// GenerateCoefficients. Returns AAX_SUCCESS or AAX_ERROR_INVALID_PARAMETER_ID. [main]
    virtual AAX_Result UpdateParameterNormalizedValue(AAX_CParamID paramID, double value,
                                                      AAX_EUpdateSource source) = 0;
    /// As UpdateParameterNormalizedValue, with the current value plus `delta`. Returns AAX_SUCCESS or
    /// AAX_ERROR_INVALID_PARAMETER_ID. [main]
    virtual AAX_Result UpdateParameterNormalizedRelative(AAX_CParamID paramID, double delta) = 0;
    /// Posts the packets of all fields whose parameters have changed since the last call (the first call
    /// posts all). Returns the result of the last post, or AAX_SUCCESS. [main]
    virtual AAX_Result GenerateCoefficients() = 0;

    // State of the algorithm.

    /// Writes the first contents of a private-data field of `size` bytes. Returns a code that the host does
    /// not act upon. Called before the instance processes, on no particular thread. [any]
    virtual AAX_Result ResetFieldData(AAX_CFieldIndex field, void* data, uint32_t size) const = 0;

    // Saved settings.

    /// The number of kinds of chunk. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetNumberOfChunks(int32_t* outCount) const = 0;
    /// The four-character identifier of a kind of chunk. Returns AAX_SUCCESS, or
    /// AAX_ERROR_INVALID_CHUNK_INDEX and 0. [main]
    virtual AAX_Result GetChunkIDFromIndex(int32_t index, AAX_CTypeID* outID) const = 0;
    /// Builds a chunk and reports the size of its data area in bytes. Returns AAX_SUCCESS;
    /// AAX_ERROR_INVALID_CHUNK_ID and 0; AAX_ERROR_INCORRECT_CHUNK_SIZE. [main]
    virtual AAX_Result GetChunkSize(AAX_CTypeID chunkID, uint32_t* outSize) = 0;
    /// Writes the chunk into a record with room for the bytes that the last GetChunkSize reported (`chunk` is
    /// the caller's). Returns AAX_SUCCESS; AAX_ERROR_INVALID_CHUNK_ID; AAX_ERROR_INCORRECT_CHUNK_SIZE when
    /// the size has changed; -333 when the data cannot be written. [main]
    virtual AAX_Result GetChunk(AAX_CTypeID chunkID, AAX_SPlugInChunk* chunk) = 0;
    /// Asks for every value that a chunk (borrowed) holds. A host may answer within the request, and save,
    /// restore or compare then. Returns AAX_SUCCESS or AAX_ERROR_INVALID_CHUNK_ID. [main]
    virtual AAX_Result SetChunk(AAX_CTypeID chunkID, const AAX_SPlugInChunk* chunk) = 0;
    /// 1 when a chunk (borrowed) holds the current values, or is of another kind, else 0.
    /// Returns AAX_SUCCESS. [main]
    virtual AAX_Result CompareActiveChunk(const AAX_SPlugInChunk* chunk, uint8_t* outIsEqual) = 0;
    /// The number of changes of values since the start. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetNumberOfChanges(int32_t* outCount) const = 0;

    // The rest.

    /// The host's timer. Returns AAX_SUCCESS. [main]
    virtual AAX_Result TimerWakeup() = 0;
    /// Points of a curve to display. Returns AAX_ERROR_UNIMPLEMENTED. [main]
    virtual AAX_Result GetCurveData(AAX_CTypeID curveType, const float* values, uint32_t count,
                                    float* outValues) const = 0;
    /// The meters that belong to a curve. Returns AAX_ERROR_UNIMPLEMENTED. [main]
    virtual AAX_Result GetCurveDataMeterIds(AAX_CTypeID curveType, uint32_t* outXMeterID,
                                            uint32_t* outYMeterID) const = 0;
    /// The range in which to display a curve. Returns AAX_ERROR_UNIMPLEMENTED. [main]
    virtual AAX_Result GetCurveDataDisplayRange(AAX_CTypeID curveType, float* outXMin, float* outXMax,
                                                float* outYMin, float* outYMax) const = 0;
    /// Lets the data model fill a page table of the host's (borrowed) of the given type and page size; `host`
    /// is borrowed. Returns AAX_SUCCESS. [main]
    virtual AAX_Result UpdatePageTable(uint32_t tableType, int32_t tablePageSize, IACFUnknown* hostPageTable,
                                       IACFUnknown* host) const = 0;
    /// Writes at most `size` bytes of custom data and reports how many. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetCustomData(AAX_CTypeID dataID, uint32_t size, void* outData,
                                     uint32_t* outSize) const = 0;
    /// Takes `size` bytes of custom data (borrowed). Returns AAX_SUCCESS. [main]
    virtual AAX_Result SetCustomData(AAX_CTypeID dataID, uint32_t size, const void* data) = 0;
    /// Moves MIDI messages. Returns AAX_SUCCESS. [main]
    virtual AAX_Result DoMIDITransfers() = 0;
    /// Takes a MIDI message for a node of the algorithm (borrowed). Returns AAX_SUCCESS. [main]
    virtual AAX_Result UpdateMIDINodes(AAX_CFieldIndex field, AAX_CMidiPacket& packet) = 0;
    /// Takes a MIDI message for a control node (borrowed). Returns AAX_SUCCESS. [main]
    virtual AAX_Result UpdateControlMIDINodes(AAX_CTypeID nodeID, AAX_CMidiPacket& packet) = 0;
    /// Renders a hybrid instance's buffer. Returns AAX_ERROR_UNIMPLEMENTED. [audio]
    virtual AAX_Result RenderAudio_Hybrid(void* renderInfo) = 0;

protected:
    ~AAX_IACFEffectParameters() = default;
};

#endif
