/// One algorithm variant, as the description writes it.
#ifndef VARNO_INTERFACES_AAX_ICOMPONENTDESCRIPTOR_H
#define VARNO_INTERFACES_AAX_ICOMPONENTDESCRIPTOR_H

#include "AAX.h"
#include "AAX_IPropertyMap.h"

/// Each operation forwards to the host's of the same name (AAX_IACFComponentDescriptor, which documents each
/// field of the context is). Texts and lists are borrowed for the call. The maps that the descriptor makes it
/// owns: they live as long as it does, through Clear too.
class AAX_IComponentDescriptor {
public:
    virtual ~AAX_IComponentDescriptor() = default;
    /// Forgets everything declared so far. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a
    /// host's descriptor. [main]
    virtual AAX_Result Clear() = 0;
    /// Declares the input channels. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a host's
    /// descriptor. [main]
    virtual AAX_Result AddAudioIn(AAX_CFieldIndex field) = 0;
    /// Declares the output channels. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a host's
    /// descriptor. [main]
    virtual AAX_Result AddAudioOut(AAX_CFieldIndex field) = 0;
    /// Declares the length of the buffer. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a
    /// host's descriptor. [main]
    virtual AAX_Result AddAudioBufferLength(AAX_CFieldIndex field) = 0;
    /// Declares the sample rate. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a host's
    /// descriptor. [main]
    virtual AAX_Result AddSampleRate(AAX_CFieldIndex field) = 0;
    /// Declares a running clock. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a host's
    /// descriptor. [main]
    virtual AAX_Result AddClock(AAX_CFieldIndex field) = 0;
    /// Declares the side-chain's index. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a host's
    /// descriptor. [main]
    virtual AAX_Result AddSideChainIn(AAX_CFieldIndex field) = 0;
    /// Declares a port for packets of `packetSize` bytes. Returns the host's result, or AAX_ERROR_NULL_OBJECT
    /// without a host's descriptor. [main]
    virtual AAX_Result AddDataInPort(AAX_CFieldIndex field, uint32_t packetSize,
                                     AAX_EDataInPortType type) = 0;
    /// Declares an auxiliary output stem. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a
    /// host's descriptor. [main]
    virtual AAX_Result AddAuxOutputStem(AAX_CFieldIndex field, int32_t stemFormat, const char* name) = 0;
    /// Declares `size` bytes kept for each instance. Returns the host's result, or AAX_ERROR_NULL_OBJECT
    /// without a host's descriptor. [main]
    virtual AAX_Result AddPrivateData(AAX_CFieldIndex field, int32_t size, uint32_t options) = 0;
    /// Declares `size` bytes of scratch memory. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a
    /// host's descriptor. [main]
    virtual AAX_Result AddTemporaryData(AAX_CFieldIndex field, uint32_t size) = 0;
    /// Declares a direct-memory-access unit. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a
    /// host's descriptor. [main]
    virtual AAX_Result AddDmaInstance(AAX_CFieldIndex field, AAX_IDma::EMode mode) = 0;
    /// Declares `count` meter taps. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a host's
    /// descriptor. [main]
    virtual AAX_Result AddMeters(AAX_CFieldIndex field, const AAX_CTypeID* meterIDs, uint32_t count) = 0;
    /// Declares a MIDI node. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a host's descriptor.
    /// [main]
    virtual AAX_Result AddMIDINode(AAX_CFieldIndex field, int32_t nodeType, const char* name,
                                   uint32_t channelMask) = 0;
    /// Declares a field reserved for the host. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a
    /// host's descriptor. [main]
    virtual AAX_Result AddReservedField(AAX_CFieldIndex field, uint32_t fieldType) = 0;
    /// A new property map, owned by this descriptor; null when the host fails or there is none. [main]
    virtual AAX_IPropertyMap* NewPropertyMap() = 0;
    /// A new property map with the contents of `map` (borrowed, may be null), owned by this descriptor; null
    /// when the host fails or there is none. [main]
    virtual AAX_IPropertyMap* DuplicatePropertyMap(AAX_IPropertyMap* map) = 0;
    /// Registers a routine that runs on this machine, with the properties that `map` (borrowed, may be null)
    /// holds now. The init and background routines and the place for the number of the registration may be
    /// null. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a host's descriptor. [main]
    virtual AAX_Result AddProcessProc_Native(AAX_CProcessProc processProc, AAX_IPropertyMap* map,
                                             AAX_CInstanceInitProc initProc,
                                             AAX_CBackgroundProc backgroundProc, int32_t* outProcID) = 0;
    /// Registers a routine of a module for DSP hardware, with the properties that `map` (borrowed, may be
    /// null) holds now. The init and background names and the place for the number of the registration may be
    /// null. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a host's descriptor. [main]
    virtual AAX_Result AddProcessProc_TI(const char* dllName, const char* entryName, AAX_IPropertyMap* map,
                                         const char* initName, const char* backgroundName,
                                         int32_t* outProcID) = 0;
    /// Registers what `map` (borrowed, may be null) alone describes; at most `capacity` numbers are written.
    /// Returns the host's result, or AAX_ERROR_NULL_OBJECT without a host's descriptor. [main]
    virtual AAX_Result AddProcessProc(AAX_IPropertyMap* map, int32_t* outProcIDs, int32_t capacity) = 0;
    /// The host's descriptor, borrowed; null when there is none. [main]
    virtual IACFUnknown* HostObject() const = 0;
};

#endif
