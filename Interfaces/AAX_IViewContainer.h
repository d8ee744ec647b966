/// The native view in which the host places the editor, as the plug-in uses it.
#ifndef VARNO_INTERFACES_AAX_IVIEWCONTAINER_H
#define VARNO_INTERFACES_AAX_IVIEWCONTAINER_H

#include "AAX.h"

/// Each operation forwards to the host's of the same name (AAX_IACFViewContainer, AAX_IACFViewContainer_V2).
/// Modifiers are AAX_EModifiers bits; identifiers and lists are borrowed for the call. The host answers a
/// gesture with AAX_SUCCESS when it has taken it; everything else means that the editor handles it.
class AAX_IViewContainer {
public:
    virtual ~AAX_IViewContainer() = default;
    /// The kind of the native view, an AAX_EViewContainerType; AAX_eViewContainerType_None without version 1.
    /// [main]
    virtual int32_t GetType() = 0;
    /// The native view, borrowed from the host; null without version 1. [main]
    virtual void* GetPtr() = 0;
    /// The modifier keys that are down now. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without
    /// version 1. [main]
    virtual AAX_Result GetModifiers(uint32_t* outModifiers) = 0;
    /// Asks for another size in pixels. Returns the host's result, or AAX_SUCCESS without version 1: an
    /// editor whose host cannot resize it is no failure. [main]
    virtual AAX_Result SetViewSize(AAX_Point& size) = 0;
    /// Offers a mouse-down on a parameter. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without
    /// version 1. [main]
    virtual AAX_Result HandleParameterMouseDown(AAX_CParamID paramID, uint32_t modifiers) = 0;
    /// Offers a mouse-drag on a parameter. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without
    /// version 1. [main]
    virtual AAX_Result HandleParameterMouseDrag(AAX_CParamID paramID, uint32_t modifiers) = 0;
    /// Offers a mouse-up on a parameter. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without
    /// version 1. [main]
    virtual AAX_Result HandleParameterMouseUp(AAX_CParamID paramID, uint32_t modifiers) = 0;

    /// Offers a mouse-down on `count` parameters. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED
    /// without version 2. [main]
    virtual AAX_Result HandleMultipleParametersMouseDown(const AAX_CParamID* paramIDs, uint32_t count,
                                                         uint32_t modifiers) = 0;
    /// Offers a mouse-drag on `count` parameters. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED
    /// without version 2. [main]
    virtual AAX_Result HandleMultipleParametersMouseDrag(const AAX_CParamID* paramIDs, uint32_t count,
                                                         uint32_t modifiers) = 0;
    /// Offers a mouse-up on `count` parameters. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without
    /// version 2. [main]
    virtual AAX_Result HandleMultipleParametersMouseUp(const AAX_CParamID* paramIDs, uint32_t count,
                                                       uint32_t modifiers) = 0;
};

#endif
