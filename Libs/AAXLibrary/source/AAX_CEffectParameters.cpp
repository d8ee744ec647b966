#include "AAX_CEffectParameters.h"

#include "AAX_Assert.h"
#include "AAX_CString.h"
#include "AAX_VAutomationDelegate.h"
#include "AAX_VController.h"
#include "AAX_VPageTable.h"
#include "AAX_VTransport.h"
#include "EntryPoint.h"
#include "HostObjects.h"

#include <cstring>

namespace {

// The host's preview state has changed.
constexpr AAX_CTypeID kPreviewStateNotification = AAX_FourCC("ASPv");
constexpr char kPreviewParameterID[] = "PreviewID";

} // namespace

AAX_CEffectParameters::AAX_CEffectParameters() = default;

AAX_CEffectParameters::~AAX_CEffectParameters() = default;

ACFRESULT AAX_CEffectParameters::InternalQueryInterface(const acfIID& iid, void** outObject) {
    return AnswerInterface(IID_IAAXEffectParametersV1, iid, outObject);
}

// Lifetime.

AAX_Result AAX_CEffectParameters::Initialize(IACFUnknown* host) {
    return AAX_Guarded(DataModelEntry(__func__), [&]() -> AAX_Result {
        LetGo();
        mController = std::make_unique<AAX_VController>(host);
        mAutomationDelegate = std::make_unique<AAX_VAutomationDelegate>(host);
        mTransport = std::make_unique<AAX_VTransport>(host);
        mParameterManager.Initialize(mAutomationDelegate.get());
        mPacketDispatcher.Initialize(mController.get(), this);

        if (const AAX_Result result = EffectInit(); result != AAX_SUCCESS) {
            return result;
        }
        // Without a master bypass it is the empty identifier that is excluded.
        AAX_CString masterBypassID;
        GetMasterBypassParameter(&masterBypassID);
        FilterParameterIDOnSave(masterBypassID.Get());
        if (mParameterManager.NumParameters() > 0) {
            mNumChunkedParameters =
                mParameterManager.NumParameters() - static_cast<int32_t>(mFilteredParameters.size());
            AAX_ASSERT(mNumChunkedParameters >= 0);
        }
        return AAX_SUCCESS;
    });
}

AAX_Result AAX_CEffectParameters::Uninitialize() {
    return AAX_Guarded(DataModelEntry(__func__), [this] {
        LetGo();
        return AAX_SUCCESS;
    });
}

void AAX_CEffectParameters::LetGo() {
    mParameterManager.RemoveAllParameters();
    mParameterManager.Initialize(nullptr);
    mPacketDispatcher.RemoveAllPackets(); // EffectInit registers them again, to be posted to the next context
    mPacketDispatcher.Initialize(nullptr, this);
    RunEach([this] { Destroy(mController); }, [this] { Destroy(mAutomationDelegate); },
            [this] { Destroy(mTransport); });
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

// Coefficients and state of the algorithm.

AAX_Result AAX_CEffectParameters::GenerateCoefficients() {
    return AAX_Guarded(DataModelEntry(__func__), [this] { return mPacketDispatcher.Dispatch(); });
}

AAX_Result AAX_CEffectParameters::ResetFieldData(AAX_CFieldIndex /*field*/, void* data, uint32_t size) const {
    if (data == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    std::memset(data, 0, size);
    return AAX_SUCCESS;
}

// Other operations.

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
    return AAX_Guarded(DataModelEntry(__func__), [&]() -> AAX_Result {
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
