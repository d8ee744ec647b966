/// The host's side of a running instance in the versions that the host offers.
#ifndef VARNO_INTERFACES_AAX_VCONTROLLER_H
#define VARNO_INTERFACES_AAX_VCONTROLLER_H

#include "AAX_IACFController.h"
#include "AAX_IACFPageTableController.h"
#include "AAX_IController.h"
#include "ACF/IACFComponentFactory.h"

/// Acquires each version once, when it is made, and holds it for its life.
class AAX_VController : public AAX_IController {
public:
    /// `host` (borrowed, may be null) is the object handed to the data model's or the editor's Initialize.
    explicit AAX_VController(IACFUnknown* host);

    /// Releases what is held of the host, all of it, then throws the first exception of the host. Each
    /// operation lacks its version from now on. [main]
    void ReleaseHost();

    AAX_Result GetEffectID(AAX_IString* outID) const override;
    AAX_Result GetSampleRate(float* outRateHz) const override;
    AAX_Result GetInputStemFormat(AAX_EStemFormat* outFormat) const override;
    AAX_Result GetOutputStemFormat(AAX_EStemFormat* outFormat) const override;
    AAX_Result GetSignalLatency(int32_t* outFrames) const override;
    AAX_Result GetCycleCount(AAX_EProperty property, int32_t* outCycles) const override;
    AAX_Result GetTODLocation(AAX_CTimeOfDay* outFrames) const override;
    AAX_Result SetSignalLatency(int32_t frames) override;
    AAX_Result SetCycleCount(AAX_EProperty* properties, int32_t* cycles, int32_t count) override;
    AAX_Result PostPacket(AAX_CFieldIndex field, const void* payload, uint32_t size) override;
    AAX_Result GetCurrentMeterValue(AAX_CTypeID meterID, float* outValue) const override;
    AAX_Result GetMeterPeakValue(AAX_CTypeID meterID, float* outValue) const override;
    AAX_Result ClearMeterPeakValue(AAX_CTypeID meterID) const override;
    AAX_Result GetMeterClipped(AAX_CTypeID meterID, uint8_t* outClipped) const override;
    AAX_Result ClearMeterClipped(AAX_CTypeID meterID) const override;
    AAX_Result GetMeterCount(uint32_t* outCount) const override;
    AAX_Result GetNextMIDIPacket(AAX_CFieldIndex* port, AAX_CMidiPacket* outPacket) override;

    AAX_Result SendNotification(AAX_CTypeID type, const void* data, uint32_t size) override;
    AAX_Result SendNotification(AAX_CTypeID type) override;
    AAX_Result GetHybridSignalLatency(int32_t* outFrames) const override;
    AAX_Result GetCurrentAutomationTimestamp(AAX_CTimeOfDay* outFrames) const override;
    AAX_Result GetHostName(AAX_IString* outName) const override;

    AAX_Result GetPlugInTargetPlatform(int32_t* outPlatform) const override;
    AAX_Result GetIsAudioSuite(uint8_t* outIsAudioSuite) const override;

    ACFPtr<AAX_IACFPageTable_V2> CreatePageTable() const override;
    std::unique_ptr<AAX_IPageTable> CreateTableCopyForEffect(int32_t manufacturerID, int32_t productID,
                                                             int32_t plugInID, uint32_t tableType,
                                                             int32_t tablePageSize) const override;
    std::unique_ptr<AAX_IPageTable> CreateTableCopyForLayout(const char* effectID, const char* layoutName,
                                                             uint32_t tableType,
                                                             int32_t tablePageSize) const override;
    std::unique_ptr<AAX_IPageTable>
    CreateTableCopyForEffectFromFile(const char* path, AAX_ETextEncoding encoding, int32_t manufacturerID,
                                     int32_t productID, int32_t plugInID, uint32_t tableType,
                                     int32_t tablePageSize) const override;
    std::unique_ptr<AAX_IPageTable>
    CreateTableCopyForLayoutFromFile(const char* path, AAX_ETextEncoding encoding, const char* layoutName,
                                     uint32_t tableType, int32_t tablePageSize) const override;

private:
    ACFPtr<AAX_IACFController> mVersion1;
    ACFPtr<AAX_IACFController_V2> mVersion2;
    ACFPtr<AAX_IACFController_V3> mVersion3;
    ACFPtr<AAX_IACFPageTableController> mPageTableController;
    ACFPtr<AAX_IACFPageTableController_V2> mPageTableControllerV2;
    ACFPtr<IACFComponentFactory> mComponentFactory;
};

#endif
