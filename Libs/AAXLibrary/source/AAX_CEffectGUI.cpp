#include "AAX_CEffectGUI.h"

#include "AAX_CString.h"
#include "AAX_Guarded.h"
#include "AAX_VController.h"
#include "AAX_VTransport.h"
#include "AAX_VViewContainer.h"
#include "HostObjects.h"

namespace {

// The editor's entry point of this name.
AAX_EntryPoint EditorEntry(const char* name) {
    return {"AAX_CEffectGUI", name};
}

} // namespace

AAX_CEffectGUI::AAX_CEffectGUI() = default;

AAX_CEffectGUI::~AAX_CEffectGUI() {
    AAX_CEffectGUI::Uninitialize();
}

ACFRESULT AAX_CEffectGUI::InternalQueryInterface(const acfIID& iid, void** outObject) {
    return AnswerInterface(IID_IAAXEffectGUIV1, iid, outObject);
}

// Lifetime.

AAX_Result AAX_CEffectGUI::Initialize(IACFUnknown* host) {
    const auto self = Hold();
    return AAX_Guarded(EditorEntry(__func__), [&]() -> AAX_Result {
        mController = std::make_unique<AAX_VController>(host);
        if (host == nullptr) {
            return AAX_ERROR_NOT_INITIALIZED;
        }
        mEffectParameters = ACFPtr<AAX_IACFEffectParameters>::Query(host, IID_IAAXEffectParametersV1);
        mTransport = std::make_unique<AAX_VTransport>(host);
        CreateViewContents();
        return AAX_SUCCESS;
    });
}

AAX_Result AAX_CEffectGUI::Uninitialize() {
    const auto self = Hold();
    return AAX_Guarded(EditorEntry(__func__), [this] {
        if (mViewContainer) {
            SetViewContainer(nullptr);
        }
        LetGo();
        return AAX_SUCCESS;
    });
}

void AAX_CEffectGUI::LetGo() {
    RunEach([this] { mEffectParameters.Reset(); }, [this] { Destroy(mController); },
            [this] { Destroy(mTransport); });
}

AAX_Result AAX_CEffectGUI::NotificationReceived(AAX_CTypeID /*type*/, const void* /*data*/,
                                                uint32_t /*size*/) {
    return AAX_SUCCESS;
}

// The view.

AAX_Result AAX_CEffectGUI::SetViewContainer(IACFUnknown* container) {
    const auto self = Hold();
    return AAX_Guarded(EditorEntry(__func__), [&] {
        const uint32_t change = ++mContainerChange;
        if (container == nullptr) {
            DeleteViewContainer();
            // Unless the host has set another one from within.
            if (change == mContainerChange) {
                mViewContainer.reset();
            }
        } else {
            mViewContainer = std::make_unique<AAX_VViewContainer>(container);
            CreateViewContainer();
            UpdateAllParameters();
        }
        return AAX_SUCCESS;
    });
}

AAX_Result AAX_CEffectGUI::GetViewSize(AAX_Point* /*outSize*/) const {
    return AAX_SUCCESS;
}

AAX_Result AAX_CEffectGUI::Draw(AAX_Rect* /*rect*/) {
    return AAX_SUCCESS;
}

AAX_Result AAX_CEffectGUI::TimerWakeup() {
    return AAX_SUCCESS;
}

AAX_Result AAX_CEffectGUI::GetCustomLabel(AAX_EPlugInStrings /*which*/, AAX_IString* /*outText*/) const {
    return AAX_ERROR_NULL_OBJECT;
}

// Parameters.

AAX_Result AAX_CEffectGUI::ParameterUpdated(AAX_CParamID /*paramID*/) {
    return AAX_SUCCESS;
}

AAX_Result AAX_CEffectGUI::SetControlHighlightInfo(AAX_CParamID /*paramID*/, uint8_t /*isHighlighted*/,
                                                   AAX_EHighlightColor /*colour*/) {
    return AAX_SUCCESS;
}

void AAX_CEffectGUI::UpdateAllParameters() {
    // The host may uninitialise the editor from within.
    const auto parameters = ACFPtr<AAX_IACFEffectParameters>::Retain(mEffectParameters.Get());
    int32_t count = -1;
    if (!parameters || parameters->GetNumberOfParameters(&count) != AAX_SUCCESS || count < 0) {
        return;
    }
    // One query too many, for the index past the end, which fails: hosts expect it.
    for (int64_t index = 0; index <= count; ++index) {
        AAX_CString id;
        if (parameters->GetParameterIDFromIndex(static_cast<int32_t>(index), &id) == AAX_SUCCESS) {
            ParameterUpdated(id.Get());
        }
    }
}

// Objects of the host.

ACFPtr<AAX_IACFEffectGUI> AAX_CEffectGUI::Hold() {
    return ACFPtr<AAX_IACFEffectGUI>::Retain(this);
}

AAX_IController* AAX_CEffectGUI::GetController() const {
    return mController.get();
}

AAX_IViewContainer* AAX_CEffectGUI::GetViewContainer() const {
    return mViewContainer.get();
}

int32_t AAX_CEffectGUI::GetViewContainerType() const {
    return mViewContainer ? mViewContainer->GetType() : AAX_eViewContainerType_None;
}

void* AAX_CEffectGUI::GetViewContainerPtr() const {
    return mViewContainer ? mViewContainer->GetPtr() : nullptr;
}
