#include "Host/InstanceHost.h"

#include <algorithm>
#include <string>

namespace varno {

namespace {

// Statically initialised, so that the first access on a thread costs nothing more than any other.
thread_local bool tIsAudioThread = false;

std::vector<AAX_CTypeID> meterIDs(const VariantDescription& variant) {
    const FieldDescription* field = variant.firstField(FieldKind::kMeters);
    return field == nullptr ? std::vector<AAX_CTypeID>() : field->meterIDs;
}

// The effect describes its meters in the order of the taps.
std::vector<std::size_t> reductionTapsOf(const EffectDescription& effect, std::size_t taps) {
    std::vector<std::size_t> found;
    for (std::size_t tap = 0; tap < std::min(effect.meters.size(), taps); ++tap) {
        if (integerProperty(effect.meters[tap].properties, AAX_eProperty_Meter_Kind) ==
            AAX_eMeterKind_GainReduction) {
            found.push_back(tap);
        }
    }
    return found;
}

std::string pageTableFileOf(const EffectDescription& effect) {
    const ResourceDescription* resource = effect.resource(AAX_eResourceType_PageTable);
    return resource == nullptr ? std::string() : resource->fileName;
}

} // namespace

AudioThreadScope::AudioThreadScope() noexcept
    : mWasAudioThread(tIsAudioThread) {
    tIsAudioThread = true;
}

AudioThreadScope::~AudioThreadScope() {
    tIsAudioThread = mWasAudioThread;
}

bool isAudioThread() noexcept {
    return tIsAudioThread;
}

bool MainGate::tryToTake() {
    std::thread::id nobody;
    return mOwner.compare_exchange_strong(nobody, std::this_thread::get_id());
}

void MainGate::take() {
    std::thread::id other;
    while (!mOwner.compare_exchange_strong(other, std::this_thread::get_id())) {
        mOwner.wait(other);
        other = {};
    }
}

void MainGate::leave() {
    mOwner.store({});
    mOwner.notify_one();
}

MainGate::Scope::Scope(MainGate& gate, const char* operation)
    : mGate(gate) {
    gate.checkThread(operation);
    if (!gate.isOwner()) {
        gate.take();
        mIsOuter = true;
    }
}

MainGate::Scope::~Scope() {
    if (mIsOuter) {
        mGate.leave();
    }
}

MainGate::BufferValuesScope::BufferValuesScope(MainGate& gate) noexcept
    : mGate(gate),
      mIsOuter(gate.tryToTake()),
      mIsHeld(mIsOuter || gate.isOwner()) {
    if (mIsHeld) {
        mOuterIsForBuffer = gate.mIsForBuffer.exchange(true);
    }
}

MainGate::BufferValuesScope::~BufferValuesScope() {
    if (mIsHeld) {
        mGate.mIsForBuffer.store(mOuterIsForBuffer);
    }
    if (mIsOuter) {
        mGate.leave();
    }
}

void MainGate::check(const char* operation) const {
    const std::thread::id owner = mOwner.load();
    if (owner != std::this_thread::get_id() || !mIsForBuffer.load()) {
        checkThread(operation);
    }
    if (owner != std::thread::id() && owner != std::this_thread::get_id()) {
        mMonitor->report(Contract::kThread,
                         std::string(operation) + " while another thread is in a [main] call");
    }
    if (mIsClosed.load(std::memory_order_acquire)) {
        mMonitor->report(Contract::kLifecycle, std::string(operation) + " after the end of the instance");
    }
}

void MainGate::checkThread(const char* operation) const {
    if (isAudioThread()) {
        mMonitor->report(Contract::kThread, std::string(operation) + " on the audio thread");
    }
}

InstanceState::InstanceState(std::shared_ptr<HostContext> sharedContext, const EffectDescription& itsEffect,
                             const VariantDescription& itsVariant, const InstanceSetup& itsSetup)
    : context(std::move(sharedContext)),
      effectID(itsEffect.id),
      pageTableFile(pageTableFileOf(itsEffect)),
      variant(itsVariant),
      setup(itsSetup),
      gate(context->monitor),
      packets(variant, setup.oversampling, context->options.oversampling.coefficients),
      meters(meterIDs(variant), setup.sampleRateHz, reductionTapsOf(itsEffect, meterIDs(variant).size())) {
}

std::int32_t InstanceState::nativeProperty(AAX_EProperty property) const {
    return variant.natives.empty()
               ? 0
               : integerProperty(variant.natives.front().properties, property).value_or(0);
}

InstanceHost::InstanceHost(std::shared_ptr<HostContext> sharedContext, const EffectDescription& effect,
                           const VariantDescription& variant, const InstanceSetup& setup)
    : HostObject(std::move(sharedContext), "instance host"),
      mState(context(), effect, variant, setup),
      mController(*this, mState),
      mTransport(*this, mState),
      mAutomation(*this, mState),
      mPageTables(*this, mState),
      mFactory(*this, context()) {
}

void InstanceHost::end() {
    setDataModel(nullptr);
    mState.notify = nullptr;
    mAutomation.reportOpenTouches();
    mState.gate.close();
}

void* InstanceHost::interfaceFor(const acfIID& iid) {
    if (iid == IID_IAAXControllerV1) {
        return static_cast<AAX_IACFController*>(&mController);
    }
    if (iid == IID_IAAXControllerV2) {
        return static_cast<AAX_IACFController_V2*>(&mController);
    }
    if (iid == IID_IAAXControllerV3) {
        return static_cast<AAX_IACFController_V3*>(&mController);
    }
    if (iid == IID_IAAXTransportV1) {
        return static_cast<AAX_IACFTransport*>(&mTransport);
    }
    if (iid == IID_IAAXTransportV2) {
        return static_cast<AAX_IACFTransport_V2*>(&mTransport);
    }
    if (iid == IID_IAAXTransportV3) {
        return static_cast<AAX_IACFTransport_V3*>(&mTransport);
    }
    if (iid == IID_IAAXAutomationDelegateV1) {
        return static_cast<AAX_IACFAutomationDelegate*>(&mAutomation);
    }
    if (iid == IID_IAAXPageTableController) {
        return static_cast<AAX_IACFPageTableController*>(&mPageTables);
    }
    if (iid == IID_IAAXPageTableControllerV2) {
        return static_cast<AAX_IACFPageTableController_V2*>(&mPageTables);
    }
    return iid == IID_IACFComponentFactory ? static_cast<IACFComponentFactory*>(&mFactory) : nullptr;
}

ACFRESULT InstanceHost::queryOther(const acfIID& iid, void** outObject) {
    const bool isDataModel = iid == IID_IAAXEffectParametersV1 && mDataModel != nullptr;
    return isDataModel ? mDataModel->QueryInterface(iid, outObject) : ACF_E_NOINTERFACE;
}

} // namespace varno
