/// A host object whose every call can be made to fail or to call back.
#ifndef VARNO_APPS_VARNO_VALIDATE_MODULE_RAWHOST_H
#define VARNO_APPS_VARNO_VALIDATE_MODULE_RAWHOST_H

#include "AAX_IACFAutomationDelegate.h"
#include "AAX_IACFController.h"
#include "AAX_UIDs.h"
#include "Host/HostOptions.h"

#include <cstdint>
#include <exception>
#include <functional>
#include <utility>

namespace varno::validate {

/// What a host throws that throws.
struct ThrownByHost : std::exception {};

/// Offers what a data model uses, and keeps nothing of what it is told. Outlives the module's use of it.
/// [main]
class RawHost final : public AAX_IACFController_V3, public AAX_IACFAutomationDelegate {
public:
    RawHost() = default;
    RawHost(const RawHost&) = delete;
    RawHost& operator=(const RawHost&) = delete;
    virtual ~RawHost() = default;

    /// From now on, called within every call of the module's but AddRef() and Release(); what it throws, the
    /// module receives. Empty for nothing.
    void setHook(std::function<void()> hook) { mHook = std::move(hook); }
    IACFUnknown& unknown() { return static_cast<AAX_IACFController_V3&>(*this); }

    ACFRESULT QueryInterface(const acfIID& iid, void** outObject) override {
        *outObject = nullptr;
        (void)called();
        if (iid == IID_IACFUnknown || iid == IID_IAAXControllerV1 || iid == IID_IAAXControllerV2 ||
            iid == IID_IAAXControllerV3) {
            *outObject = static_cast<AAX_IACFController_V3*>(this);
        } else if (iid == IID_IAAXAutomationDelegateV1) {
            *outObject = static_cast<AAX_IACFAutomationDelegate*>(this);
        }
        return *outObject == nullptr ? ACF_E_NOINTERFACE : ACF_OK;
    }
    std::uint32_t AddRef() override { return 1; }
    std::uint32_t Release() override { return 1; }

    AAX_Result GetEffectID(AAX_IString*) const override { return called(); }
    AAX_Result GetSampleRate(float* outRateHz) const override {
        *outRateHz = static_cast<float>(kDefaultSampleRateHz);
        return called();
    }
    AAX_Result GetInputStemFormat(AAX_EStemFormat*) const override { return called(); }
    AAX_Result GetOutputStemFormat(AAX_EStemFormat*) const override { return called(); }
    AAX_Result GetSignalLatency(std::int32_t*) const override { return called(); }
    AAX_Result GetCycleCount(AAX_EProperty, std::int32_t*) const override { return called(); }
    AAX_Result GetTODLocation(AAX_CTimeOfDay*) const override { return called(); }
    AAX_Result SetSignalLatency(std::int32_t) override { return called(); }
    AAX_Result SetCycleCount(AAX_EProperty*, std::int32_t*, std::int32_t) override { return called(); }
    AAX_Result PostPacket(AAX_CFieldIndex, const void*, std::uint32_t) override { return called(); }
    AAX_Result GetCurrentMeterValue(AAX_CTypeID, float*) const override { return called(); }
    AAX_Result GetMeterPeakValue(AAX_CTypeID, float*) const override { return called(); }
    AAX_Result ClearMeterPeakValue(AAX_CTypeID) const override { return called(); }
    AAX_Result GetMeterClipped(AAX_CTypeID, std::uint8_t*) const override { return called(); }
    AAX_Result ClearMeterClipped(AAX_CTypeID) const override { return called(); }
    AAX_Result GetMeterCount(std::uint32_t*) const override { return called(); }
    AAX_Result GetNextMIDIPacket(AAX_CFieldIndex*, AAX_CMidiPacket*) override { return called(); }
    AAX_Result SendNotification(AAX_CTypeID, const void*, std::uint32_t) override { return called(); }
    AAX_Result GetHybridSignalLatency(std::int32_t*) const override { return called(); }
    AAX_Result GetCurrentAutomationTimestamp(AAX_CTimeOfDay*) const override { return called(); }
    AAX_Result GetHostName(AAX_IString*) const override { return called(); }
    AAX_Result GetPlugInTargetPlatform(std::int32_t*) const override { return called(); }
    AAX_Result GetIsAudioSuite(std::uint8_t*) const override { return called(); }

    AAX_Result RegisterParameter(AAX_CParamID) override { return called(); }
    AAX_Result UnregisterParameter(AAX_CParamID) override { return called(); }
    AAX_Result PostSetValueRequest(AAX_CParamID, double) override { return called(); }
    AAX_Result PostCurrentValue(AAX_CParamID, double) override { return called(); }
    AAX_Result PostTouchRequest(AAX_CParamID) override { return called(); }
    AAX_Result PostReleaseRequest(AAX_CParamID) override { return called(); }

private:
    AAX_Result called() const {
        if (mHook) {
            mHook();
        }
        return AAX_SUCCESS;
    }

    std::function<void()> mHook;
};

/// A hook that throws at each call after the first `calls`.
inline std::function<void()> throwAfter(int calls) {
    return [left = calls]() mutable {
        if (left == 0) {
            throw ThrownByHost();
        }
        --left;
    };
}

} // namespace varno::validate

#endif
