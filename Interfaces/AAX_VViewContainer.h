/// The editor's place in the host in the versions that the host offers.
#ifndef VARNO_INTERFACES_AAX_VVIEWCONTAINER_H
#define VARNO_INTERFACES_AAX_VVIEWCONTAINER_H

#include "AAX_IACFViewContainer.h"
#include "AAX_IViewContainer.h"

/// Asks for each version once, when it is made. It borrows them all: the references that these queries added
/// are the host's, which keeps the container for longer than the editor has it and releases them itself. So
/// they are never released here; otherwise the container could be destroyed while the host uses it.
class AAX_VViewContainer : public AAX_IViewContainer {
public:
    /// `container` (borrowed, may be null) is the object handed to the editor.
    explicit AAX_VViewContainer(IACFUnknown* container);
    AAX_VViewContainer(const AAX_VViewContainer&) = delete;
    AAX_VViewContainer& operator=(const AAX_VViewContainer&) = delete;
    /// Releases nothing.
    ~AAX_VViewContainer() override;

    int32_t GetType() override;
    void* GetPtr() override;
    AAX_Result GetModifiers(uint32_t* outModifiers) override;
    AAX_Result SetViewSize(AAX_Point& size) override;
    AAX_Result HandleParameterMouseDown(AAX_CParamID paramID, uint32_t modifiers) override;
    AAX_Result HandleParameterMouseDrag(AAX_CParamID paramID, uint32_t modifiers) override;
    AAX_Result HandleParameterMouseUp(AAX_CParamID paramID, uint32_t modifiers) override;

    AAX_Result HandleMultipleParametersMouseDown(const AAX_CParamID* paramIDs, uint32_t count,
                                                 uint32_t modifiers) override;
    AAX_Result HandleMultipleParametersMouseDrag(const AAX_CParamID* paramIDs, uint32_t count,
                                                 uint32_t modifiers) override;
    AAX_Result HandleMultipleParametersMouseUp(const AAX_CParamID* paramIDs, uint32_t count,
                                               uint32_t modifiers) override;

private:
    AAX_IACFViewContainer* mVersion1;
    AAX_IACFViewContainer_V2* mVersion2;
};

#endif
