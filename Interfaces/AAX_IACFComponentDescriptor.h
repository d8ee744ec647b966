/// The host's record of one algorithm variant.
#ifndef VARNO_INTERFACES_AAX_IACFCOMPONENTDESCRIPTOR_H
#define VARNO_INTERFACES_AAX_IACFCOMPONENTDESCRIPTOR_H

#include "AAX.h"

/// Version 1 (IID_IAAXComponentDescriptorV1). Declares what each field of an algorithm's context points at,
/// and the routines that run on it. A field index counts pointers from the start of the context; each may be
/// declared once.
class AAX_IACFComponentDescriptor : public IACFUnknown {
public:
    /// Forgets everything declared so far, so that the descriptor can describe another variant.
    /// Returns AAX_SUCCESS. [main]
    virtual AAX_Result Clear() = 0;
    /// The field is an array of input channel pointers (float samples, full scale 1.0). Returns AAX_SUCCESS,
    /// or AAX_ERROR_INVALID_FIELD_INDEX for a negative or taken index. [main]
    virtual AAX_Result AddAudioIn(AAX_CFieldIndex field) = 0;
    /// The field is an array of output channel pointers (float samples). Returns AAX_SUCCESS, or
    /// AAX_ERROR_INVALID_FIELD_INDEX for a negative or taken index. [main]
    virtual AAX_Result AddAudioOut(AAX_CFieldIndex field) = 0;
    /// The field is the length of the buffer in frames (int32). Returns AAX_SUCCESS, or
    /// AAX_ERROR_INVALID_FIELD_INDEX for a negative or taken index. [main]
    virtual AAX_Result AddAudioBufferLength(AAX_CFieldIndex field) = 0;
    /// The field is the sample rate in Hz (float). Returns AAX_SUCCESS, or AAX_ERROR_INVALID_FIELD_INDEX for
    /// a negative or taken index. [main]
    virtual AAX_Result AddSampleRate(AAX_CFieldIndex field) = 0;
    /// The field is a running clock in frames (int64). Returns AAX_SUCCESS, or AAX_ERROR_INVALID_FIELD_INDEX
    /// for a negative or taken index. [main]
    virtual AAX_Result AddClock(AAX_CFieldIndex field) = 0;
    /// The field is the index of the side-chain channel (int32). Returns AAX_SUCCESS, or
    /// AAX_ERROR_INVALID_FIELD_INDEX for a negative or taken index. [main]
    virtual AAX_Result AddSideChainIn(AAX_CFieldIndex field) = 0;
    /// The field is the latest packet posted for it, of `packetSize` bytes (at least 1).
    /// Returns AAX_SUCCESS; AAX_ERROR_INVALID_FIELD_INDEX for a negative or taken index;
    /// AAX_ERROR_INVALID_ARGUMENT for a size of 0. [main]
    virtual AAX_Result AddDataInPort(AAX_CFieldIndex field, uint32_t packetSize,
                                     AAX_EDataInPortType type) = 0;
    /// The field is an auxiliary output stem. `name` is borrowed. Returns AAX_SUCCESS, or a failure code
    /// where the host has none. [main]
    virtual AAX_Result AddAuxOutputStem(AAX_CFieldIndex field, int32_t stemFormat, const char* name) = 0;
    /// The field is `size` bytes (at least 1) that the host keeps for each instance; their first contents
    /// come from the data model's ResetFieldData. `options` 0 asks for no special placement. Returns
    /// AAX_SUCCESS; AAX_ERROR_INVALID_FIELD_INDEX for a negative or taken index; AAX_ERROR_INVALID_ARGUMENT
    /// for a size below 1. [main]
    virtual AAX_Result AddPrivateData(AAX_CFieldIndex field, int32_t size, uint32_t options) = 0;
    /// The field is `size` bytes of scratch memory without lasting contents. Returns AAX_SUCCESS, or
    /// AAX_ERROR_INVALID_FIELD_INDEX for a negative or taken index. [main]
    virtual AAX_Result AddTemporaryData(AAX_CFieldIndex field, uint32_t size) = 0;
    /// The field is a direct-memory-access unit. Returns AAX_SUCCESS, or a failure code where the host has
    /// none. [main]
    virtual AAX_Result AddDmaInstance(AAX_CFieldIndex field, AAX_IDma::EMode mode) = 0;
    /// The field is `count` meter taps, contiguous floats in the order of the identifiers, which are copied.
    /// Returns AAX_SUCCESS; AAX_ERROR_INVALID_FIELD_INDEX for a negative or taken index;
    /// AAX_ERROR_CONTEXT_ALREADY_HAS_METERS when another field has them; AAX_ERROR_NULL_ARGUMENT for a null
    /// list. [main]
    virtual AAX_Result AddMeters(AAX_CFieldIndex field, const AAX_CTypeID* meterIDs, uint32_t count) = 0;
    /// The field is a MIDI node. `name` is borrowed. Returns AAX_SUCCESS, or a failure code where the host
    /// has none. [main]
    virtual AAX_Result AddMIDINode(AAX_CFieldIndex field, int32_t nodeType, const char* name,
                                   uint32_t channelMask) = 0;
    /// The field is reserved for the host. Returns AAX_SUCCESS, or AAX_ERROR_INVALID_FIELD_INDEX for a
    /// negative or taken index. [main]
    virtual AAX_Result AddReservedField(AAX_CFieldIndex field, uint32_t fieldType) = 0;
    /// Makes an empty property map; on success the caller owns one reference to *outMap, otherwise it is
    /// null. Returns AAX_SUCCESS, or a failure code. [main]
    virtual AAX_Result NewPropertyMap(IACFUnknown** outMap) = 0;
    /// Makes a property map with the contents of `map` (borrowed); on success the caller owns one reference
    /// to *outMap, otherwise it is null. Returns AAX_SUCCESS, or AAX_ERROR_NULL_ARGUMENT for a null map.
    /// [main]
    virtual AAX_Result DuplicatePropertyMap(IACFUnknown* map, IACFUnknown** outMap) = 0;
    /// Registers a routine that runs on this machine, with the properties that `properties` (borrowed,
    /// copied) holds now. The init and background routines may be null; *outProcID, if given, is the host's
    /// number of the registration. Returns AAX_SUCCESS, or AAX_ERROR_NULL_ARGUMENT without routine or
    /// properties. [main]
    virtual AAX_Result AddProcessProc_Native(AAX_CProcessProc processProc, IACFUnknown* properties,
                                             AAX_CInstanceInitProc initProc,
                                             AAX_CBackgroundProc backgroundProc, int32_t* outProcID) = 0;
    /// Registers a routine of a module for DSP hardware by file and entry name (borrowed, copied), with the
    /// properties that `properties` (borrowed, copied) holds now. The init and background names may be null.
    /// Returns AAX_SUCCESS, or AAX_ERROR_NULL_ARGUMENT without names or properties. [main]
    virtual AAX_Result AddProcessProc_TI(const char* dllName, const char* entryName, IACFUnknown* properties,
                                         const char* initName, const char* backgroundName,
                                         int32_t* outProcID) = 0;
    /// Registers what `properties` (borrowed, copied) alone describes; at most `capacity` registration
    /// numbers are written to outProcIDs. Returns AAX_SUCCESS, or a failure code where the host has none.
    /// [main]
    virtual AAX_Result AddProcessProc(IACFUnknown* properties, int32_t* outProcIDs, int32_t capacity) = 0;

protected:
    ~AAX_IACFComponentDescriptor() = default;
};

#endif
