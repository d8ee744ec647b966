/// The editor's place in the host in all versions, for tests.
#ifndef VARNO_TESTS_SUPPORT_RECORDINGVIEWCONTAINER_H
#define VARNO_TESTS_SUPPORT_RECORDINGVIEWCONTAINER_H

#include "AAX_IACFViewContainer.h"
#include "Tests/Support/Recording.h"

namespace varno {

/// Notes its calls and does nothing else.
class RecordingViewContainer : public Recording<AAX_IACFViewContainer_V2> {
public:
    std::int32_t GetType() override { return note("GetType"); }
    void* GetPtr() override {
        note("GetPtr");
        return view;
    }
    AAX_Result GetModifiers(std::uint32_t* outModifiers) override {
        return note("GetModifiers", outModifiers);
    }
    AAX_Result SetViewSize(AAX_Point* size) override { return note("SetViewSize", size); }
    AAX_Result HandleParameterMouseDown(AAX_CParamID paramID, std::uint32_t modifiers) override {
        return note("HandleParameterMouseDown", paramID, modifiers);
    }
    AAX_Result HandleParameterMouseDrag(AAX_CParamID paramID, std::uint32_t modifiers) override {
        return note("HandleParameterMouseDrag", paramID, modifiers);
    }
    AAX_Result HandleParameterMouseUp(AAX_CParamID paramID, std::uint32_t modifiers) override {
        return note("HandleParameterMouseUp", paramID, modifiers);
    }
    AAX_Result HandleMultipleParametersMouseDown(const AAX_CParamID* paramIDs, std::uint32_t count,
                                                 std::uint32_t modifiers) override {
        return note("HandleMultipleParametersMouseDown", paramIDs, count, modifiers);
    }
    AAX_Result HandleMultipleParametersMouseDrag(const AAX_CParamID* paramIDs, std::uint32_t count,
                                                 std::uint32_t modifiers) override {
        return note("HandleMultipleParametersMouseDrag", paramIDs, count, modifiers);
    }
    AAX_Result HandleMultipleParametersMouseUp(const AAX_CParamID* paramIDs, std::uint32_t count,
                                               std::uint32_t modifiers) override {
        return note("HandleMultipleParametersMouseUp", paramIDs, count, modifiers);
    }

    /// What GetPtr answers.
    void* view = nullptr;
};

} // namespace varno

#endif
