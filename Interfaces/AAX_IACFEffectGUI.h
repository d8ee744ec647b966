/// The editor as the host sees it.
#ifndef VARNO_INTERFACES_AAX_IACFEFFECTGUI_H
#define VARNO_INTERFACES_AAX_IACFEFFECTGUI_H

#include "AAX.h"
#include "AAX_IString.h"

/// Version 1 (IID_IAAXEffectGUIV1), implemented by the plug-in and made by its editor creation procedure. The
/// host serialises all calls on one editor.
class AAX_IACFEffectGUI : public IACFUnknown {
public:
    /// Gives the editor the host object (borrowed for the call), which answers to the controller, the
    /// transport and IID_IAAXEffectParametersV1. Once, before anything else. Returns AAX_SUCCESS, or
    /// AAX_ERROR_NOT_INITIALIZED for a null host. [main]
    virtual AAX_Result Initialize(IACFUnknown* host) = 0;
    /// Takes everything back that Initialize gave; the view container, if any, first. Returns AAX_SUCCESS,
    /// or the code of what the host throws meanwhile, with the same effect. [main]
    virtual AAX_Result Uninitialize() = 0;
    /// Takes a notification of `size` bytes (borrowed). Returns AAX_SUCCESS. [main]
    virtual AAX_Result NotificationReceived(AAX_CTypeID type, const void* data, uint32_t size) = 0;
    /// Gives the editor its native view container (borrowed until taken back), or takes it back with null.
    /// Returns AAX_SUCCESS. [main]
    virtual AAX_Result SetViewContainer(IACFUnknown* container) = 0;
    /// The view's size in pixels; left alone while there is no view. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetViewSize(AAX_Point* outSize) const = 0;
    /// Draws the part `rect` (pixels, borrowed) of the view. Returns AAX_SUCCESS. [main]
    virtual AAX_Result Draw(AAX_Rect* rect) = 0;
    /// The host's timer, about 30 times a second. Returns AAX_SUCCESS. [main]
    virtual AAX_Result TimerWakeup() = 0;
    /// Tells that a parameter has another value. Returns AAX_SUCCESS. [main]
    virtual AAX_Result ParameterUpdated(AAX_CParamID paramID) = 0;
    /// The editor's own text for a label. Returns AAX_SUCCESS, or AAX_ERROR_NULL_OBJECT when it has none.
    /// [main]
    virtual AAX_Result GetCustomLabel(AAX_EPlugInStrings which, AAX_IString* outText) const = 0;
    /// Marks (1) or unmarks (0) a parameter's control in a colour. Returns AAX_SUCCESS. [main]
    virtual AAX_Result SetControlHighlightInfo(AAX_CParamID paramID, uint8_t isHighlighted,
                                               AAX_EHighlightColor colour) = 0;

protected:
    ~AAX_IACFEffectGUI() = default;
};

#endif
