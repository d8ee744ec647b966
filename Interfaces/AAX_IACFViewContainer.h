/// The native view in which a host places an editor.
#ifndef VARNO_INTERFACES_AAX_IACFVIEWCONTAINER_H
#define VARNO_INTERFACES_AAX_IACFVIEWCONTAINER_H

#include "AAX.h"

/// Version 1 (IID_IAAXViewContainerV1). Modifiers are AAX_EModifiers bits. An editor borrows the container:
/// it takes no lasting reference, and the host keeps it alive until it has taken it back.
class AAX_IACFViewContainer : public IACFUnknown {
public:
    /// The kind of the native view, an AAX_EViewContainerType. [main]
    virtual int32_t GetType() = 0;
    /// The native view, borrowed; its meaning depends on the type. May be null. [main]
    virtual void* GetPtr() = 0;
    /// The modifier keys that are down now. Returns AAX_SUCCESS, or AAX_ERROR_NULL_ARGUMENT. [main]
    virtual AAX_Result GetModifiers(uint32_t* outModifiers) = 0;
    /// Asks for another size, in pixels. Returns AAX_SUCCESS, or AAX_ERROR_INVALID_VIEW_SIZE. [main]
    virtual AAX_Result SetViewSize(AAX_Point* size) = 0;
    /// Offers a mouse-down on a parameter's control. Returns AAX_SUCCESS when the host has taken it,
    /// otherwise AAX_ERROR_UNIMPLEMENTED: the editor then handles it itself. [main]
    virtual AAX_Result HandleParameterMouseDown(AAX_CParamID paramID, uint32_t modifiers) = 0;
    /// Offers a mouse-drag, as HandleParameterMouseDown. Returns AAX_SUCCESS or AAX_ERROR_UNIMPLEMENTED.
    /// [main]
    virtual AAX_Result HandleParameterMouseDrag(AAX_CParamID paramID, uint32_t modifiers) = 0;
    /// Offers a mouse-up, as HandleParameterMouseDown. Returns AAX_SUCCESS or AAX_ERROR_UNIMPLEMENTED. [main]
    virtual AAX_Result HandleParameterMouseUp(AAX_CParamID paramID, uint32_t modifiers) = 0;

protected:
    ~AAX_IACFViewContainer() = default;
};

/// Version 2 (IID_IAAXViewContainerV2): gestures on `count` parameters at once; the list is borrowed.
class AAX_IACFViewContainer_V2 : public AAX_IACFViewContainer {
public:
    /// As HandleParameterMouseDown. Returns AAX_SUCCESS or AAX_ERROR_UNIMPLEMENTED. [main]
    virtual AAX_Result HandleMultipleParametersMouseDown(const AAX_CParamID* paramIDs, uint32_t count,
                                                         uint32_t modifiers) = 0;
    /// As HandleParameterMouseDrag. Returns AAX_SUCCESS or AAX_ERROR_UNIMPLEMENTED. [main]
    virtual AAX_Result HandleMultipleParametersMouseDrag(const AAX_CParamID* paramIDs, uint32_t count,
                                                         uint32_t modifiers) = 0;
    /// As HandleParameterMouseUp. Returns AAX_SUCCESS or AAX_ERROR_UNIMPLEMENTED. [main]
    virtual AAX_Result HandleMultipleParametersMouseUp(const AAX_CParamID* paramIDs, uint32_t count,
                                                       uint32_t modifiers) = 0;

protected:
    ~AAX_IACFViewContainer_V2() = default;
};

#endif
