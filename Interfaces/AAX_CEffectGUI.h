/// Base of a plug-in's editor.
#ifndef VARNO_INTERFACES_AAX_CEFFECTGUI_H
#define VARNO_INTERFACES_AAX_CEFFECTGUI_H

#include "AAX_IACFEffectParameters.h"
#include "AAX_IEffectGUI.h"
#include "ACF/ACFPtr.h"

#include <memory>

class AAX_IController;
class AAX_IViewContainer;
class AAX_VController;
class AAX_VTransport;
class AAX_VViewContainer;

/// Implements AAX_IACFEffectGUI, which documents each operation, independently of how anything is drawn: the
/// lifetime of an editor, the host's services and the distribution of parameter changes. A derived class
/// creates and deletes the view.
///
/// Everything that the host may call here is safe before Initialize and after Uninitialize, takes null
/// arguments and throws nothing: a ResultError becomes its code, any other exception
/// AAX_ERROR_UNKNOWN_EXCEPTION, with one trace line. What a derived class overrides must ensure this itself,
/// except the operations that are called from within, which stand below.
class AAX_CEffectGUI : public AAX_IEffectGUI {
public:
    AAX_CEffectGUI();
    AAX_Result Initialize(IACFUnknown* host) override;
    AAX_Result Uninitialize() override;
    AAX_Result NotificationReceived(AAX_CTypeID type, const void* data, uint32_t size) override;
    AAX_Result SetViewContainer(IACFUnknown* container) override;
    AAX_Result GetViewSize(AAX_Point* outSize) const override;
    AAX_Result Draw(AAX_Rect* rect) override;
    AAX_Result TimerWakeup() override;
    AAX_Result ParameterUpdated(AAX_CParamID paramID) override;
    AAX_Result GetCustomLabel(AAX_EPlugInStrings which, AAX_IString* outText) const override;
    AAX_Result SetControlHighlightInfo(AAX_CParamID paramID, uint8_t isHighlighted,
                                       AAX_EHighlightColor colour) override;

    /// Answers for IID_IAAXEffectGUIV1 and leaves the rest to the base. On success the caller owns one
    /// reference. [any]
    ACFRESULT InternalQueryInterface(const acfIID& iid, void** outObject) override;
    /// Calls Uninitialize. Every class that implements DeleteViewContainer calls it first in its own
    /// destructor: this one can no longer call the operations of a derived class.
    ~AAX_CEffectGUI() override;

protected:
    /// A reference to this object, for the length of an operation that calls the host: the host may release
    /// its last one from within. [main]
    ACFPtr<AAX_IACFEffectGUI> Hold();
    /// Changes with every call of SetViewContainer: the host may set another container from within an
    /// operation, or close the view. [main]
    uint32_t GetContainerChange() const { return mContainerChange; }

    // Called by the operations above; these may throw.

    /// Where a derived class loads what all its views share; called by Initialize with the host's services in
    /// place. [main]
    virtual void CreateViewContents() = 0;
    /// Where a derived class creates its view in the container that it has just received. [main]
    virtual void CreateViewContainer() = 0;
    /// Where a derived class deletes its view, if there is one; the container still exists. [main]
    virtual void DeleteViewContainer() = 0;
    /// Calls ParameterUpdated for every parameter. [main]
    virtual void UpdateAllParameters();

public:
    /// The data model; borrowed, null where the host has not offered it. [main]
    AAX_IACFEffectParameters* GetEffectParameters() const { return mEffectParameters.Get(); }
    /// The host's controller; borrowed, null before Initialize and after Uninitialize. [main]
    AAX_IController* GetController() const;
    /// The container that the host has given; borrowed, null while there is none. [main]
    AAX_IViewContainer* GetViewContainer() const;
    /// The kind of its native view, an AAX_EViewContainerType; AAX_eViewContainerType_None without container.
    /// [main]
    int32_t GetViewContainerType() const;
    /// Its native view, borrowed from the host; null without container. [main]
    void* GetViewContainerPtr() const;

private:
    std::unique_ptr<AAX_VController> mController;
    ACFPtr<AAX_IACFEffectParameters> mEffectParameters;
    std::unique_ptr<AAX_VViewContainer> mViewContainer;
    std::unique_ptr<AAX_VTransport> mTransport;
    uint32_t mContainerChange = 0;

    /// Releases the host's services; the container stays.
    void LetGo();
};

#endif
