#include "AAX_VController.h"

#include "AAX_VPageTable.h"
#include "HostObjects.h"

namespace {

// Makes an empty table and lets `controller` (may be null) fill it by `copyInto`, an operation on the
// controller and the empty table. Null when there is no controller, no table, or the copy fails.
template<class Controller, class CopyInto>
std::unique_ptr<AAX_IPageTable> CreateTableCopy(const AAX_IController& tables, const Controller& controller,
                                                CopyInto copyInto) {
    if (!controller) {
        return nullptr;
    }
    const auto table = tables.CreatePageTable();
    if (!table || copyInto(*controller, table.Get()) != AAX_SUCCESS) {
        return nullptr;
    }
    return std::make_unique<AAX_VPageTable>(table.Get());
}

} // namespace

AAX_VController::AAX_VController(IACFUnknown* host)
    : mVersion1(ACFPtr<AAX_IACFController>::Query(host, IID_IAAXControllerV1)),
      mVersion2(ACFPtr<AAX_IACFController_V2>::Query(host, IID_IAAXControllerV2)),
      mVersion3(ACFPtr<AAX_IACFController_V3>::Query(host, IID_IAAXControllerV3)),
      mPageTableController(ACFPtr<AAX_IACFPageTableController>::Query(host, IID_IAAXPageTableController)),
      mPageTableControllerV2(
          ACFPtr<AAX_IACFPageTableController_V2>::Query(host, IID_IAAXPageTableControllerV2)),
      mComponentFactory(ACFPtr<IACFComponentFactory>::Query(host, IID_IACFComponentFactory)) {
}

void AAX_VController::ReleaseHost() {
    ReleaseEach(mComponentFactory, mPageTableControllerV2, mPageTableController, mVersion3, mVersion2,
                mVersion1);
}

AAX_Result AAX_VController::GetEffectID(AAX_IString* outID) const {
    return mVersion1 ? mVersion1->GetEffectID(outID) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VController::GetSampleRate(float* outRateHz) const {
    return mVersion1 ? mVersion1->GetSampleRate(outRateHz) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VController::GetInputStemFormat(AAX_EStemFormat* outFormat) const {
    return mVersion1 ? mVersion1->GetInputStemFormat(outFormat) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VController::GetOutputStemFormat(AAX_EStemFormat* outFormat) const {
    return mVersion1 ? mVersion1->GetOutputStemFormat(outFormat) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VController::GetSignalLatency(int32_t* outFrames) const {
    return mVersion1 ? mVersion1->GetSignalLatency(outFrames) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VController::GetCycleCount(AAX_EProperty property, int32_t* outCycles) const {
    return mVersion1 ? mVersion1->GetCycleCount(property, outCycles) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VController::GetTODLocation(AAX_CTimeOfDay* outFrames) const {
    return mVersion1 ? mVersion1->GetTODLocation(outFrames) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VController::SetSignalLatency(int32_t frames) {
    return mVersion1 ? mVersion1->SetSignalLatency(frames) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VController::SetCycleCount(AAX_EProperty* properties, int32_t* cycles, int32_t count) {
    return mVersion1 ? mVersion1->SetCycleCount(properties, cycles, count) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VController::PostPacket(AAX_CFieldIndex field, const void* payload, uint32_t size) {
    return mVersion1 ? mVersion1->PostPacket(field, payload, size) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VController::GetCurrentMeterValue(AAX_CTypeID meterID, float* outValue) const {
    return mVersion1 ? mVersion1->GetCurrentMeterValue(meterID, outValue) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VController::GetMeterPeakValue(AAX_CTypeID meterID, float* outValue) const {
    return mVersion1 ? mVersion1->GetMeterPeakValue(meterID, outValue) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VController::ClearMeterPeakValue(AAX_CTypeID meterID) const {
    return mVersion1 ? mVersion1->ClearMeterPeakValue(meterID) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VController::GetMeterClipped(AAX_CTypeID meterID, uint8_t* outClipped) const {
    return mVersion1 ? mVersion1->GetMeterClipped(meterID, outClipped) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VController::ClearMeterClipped(AAX_CTypeID meterID) const {
    return mVersion1 ? mVersion1->ClearMeterClipped(meterID) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VController::GetMeterCount(uint32_t* outCount) const {
    return mVersion1 ? mVersion1->GetMeterCount(outCount) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VController::GetNextMIDIPacket(AAX_CFieldIndex* port, AAX_CMidiPacket* outPacket) {
    return mVersion1 ? mVersion1->GetNextMIDIPacket(port, outPacket) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VController::SendNotification(AAX_CTypeID type, const void* data, uint32_t size) {
    return mVersion2 ? mVersion2->SendNotification(type, data, size) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VController::SendNotification(AAX_CTypeID type) {
    return SendNotification(type, nullptr, 0);
}

AAX_Result AAX_VController::GetHybridSignalLatency(int32_t* outFrames) const {
    return mVersion2 ? mVersion2->GetHybridSignalLatency(outFrames) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VController::GetCurrentAutomationTimestamp(AAX_CTimeOfDay* outFrames) const {
    if (!mVersion2) {
        *outFrames = 0;
        return AAX_ERROR_UNIMPLEMENTED;
    }
    return mVersion2->GetCurrentAutomationTimestamp(outFrames);
}

AAX_Result AAX_VController::GetHostName(AAX_IString* outName) const {
    return mVersion2 ? mVersion2->GetHostName(outName) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VController::GetPlugInTargetPlatform(int32_t* outPlatform) const {
    return mVersion3 ? mVersion3->GetPlugInTargetPlatform(outPlatform) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VController::GetIsAudioSuite(uint8_t* outIsAudioSuite) const {
    return mVersion3 ? mVersion3->GetIsAudioSuite(outIsAudioSuite) : AAX_ERROR_UNIMPLEMENTED;
}

ACFPtr<AAX_IACFPageTable_V2> AAX_VController::CreatePageTable() const {
    return CreateComponent<AAX_IACFPageTable_V2>(mComponentFactory.Get(), AAXCompID_PageTable,
                                                 IID_IAAXPageTableV2);
}

std::unique_ptr<AAX_IPageTable> AAX_VController::CreateTableCopyForEffect(int32_t manufacturerID,
                                                                          int32_t productID, int32_t plugInID,
                                                                          uint32_t tableType,
                                                                          int32_t tablePageSize) const {
    return CreateTableCopy(*this, mPageTableController, [&](auto& controller, IACFUnknown* table) {
        return controller.CopyTableForEffect(manufacturerID, productID, plugInID, tableType, tablePageSize,
                                             table);
    });
}

std::unique_ptr<AAX_IPageTable> AAX_VController::CreateTableCopyForLayout(const char* effectID,
                                                                          const char* layoutName,
                                                                          uint32_t tableType,
                                                                          int32_t tablePageSize) const {
    return CreateTableCopy(*this, mPageTableController, [&](auto& controller, IACFUnknown* table) {
        return controller.CopyTableOfLayout(effectID, layoutName, tableType, tablePageSize, table);
    });
}

std::unique_ptr<AAX_IPageTable>
AAX_VController::CreateTableCopyForEffectFromFile(const char* path, AAX_ETextEncoding encoding,
                                                  int32_t manufacturerID, int32_t productID, int32_t plugInID,
                                                  uint32_t tableType, int32_t tablePageSize) const {
    return CreateTableCopy(*this, mPageTableControllerV2, [&](auto& controller, IACFUnknown* table) {
        return controller.CopyTableForEffectFromFile(path, encoding, manufacturerID, productID, plugInID,
                                                     tableType, tablePageSize, table);
    });
}

std::unique_ptr<AAX_IPageTable>
AAX_VController::CreateTableCopyForLayoutFromFile(const char* path, AAX_ETextEncoding encoding,
                                                  const char* layoutName, uint32_t tableType,
                                                  int32_t tablePageSize) const {
    return CreateTableCopy(*this, mPageTableControllerV2, [&](auto& controller, IACFUnknown* table) {
        return controller.CopyTableOfLayoutFromFile(path, encoding, layoutName, tableType, tablePageSize,
                                                    table);
    });
}
